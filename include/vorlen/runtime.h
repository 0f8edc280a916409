/*
 * vorlen/runtime.h - what a host application calls in vorlen_runtime.dll. Plain C.
 *
 * A module is compiled against the VorlenCore class of one runtime. libvorlen_monitor.dll as built
 * here fits the runtime built here: for the kit's own runtime it must be rebuilt with the kit's
 * own header in place of runtime/core.h.
 */
#ifndef VORLEN_RUNTIME_HOST_H
#define VORLEN_RUNTIME_HOST_H

#include <stdint.h>

#ifndef __cplusplus
#include <stdbool.h>
#endif

#if defined(_WIN32) && defined(VORLEN_RUNTIME_BUILD)
#define VORLEN_RUNTIME_API __declspec(dllexport)
#elif defined(_WIN32)
#define VORLEN_RUNTIME_API __declspec(dllimport)
#else
#define VORLEN_RUNTIME_API
#endif

#ifdef __cplusplus
extern "C" {
#endif

/*
 * Runs the init function of every registered module, in the order of registration, on the calling
 * thread, which becomes the service thread of the modules. May be called again: the init functions
 * of running modules do nothing, and modules loaded since the first call start.
 *
 * returns   true when every init function succeeded; false when one failed
 * thread    any one thread, but not while a library is being loaded, as in DllMain: a module may
 *           start a thread and wait for it, and Windows starts no thread until the library is
 *           loaded. A thread that owns windows must process messages while it waits for this call
 *           on another thread (vorlen/monitor.h, "Waiting")
 * lifetime  the modules run until Vorlen_Shutdown()
 * errors    when an init function fails, the runtime writes one log line of level critical, which
 *           is also on standard error, and runs the cleanup functions in reverse order
 */
VORLEN_RUNTIME_API bool Vorlen_Initialize(void);

/*
 * Runs the cleanup function of every registered module, in reverse order. May be called without
 * Vorlen_Initialize(), and more than once.
 *
 * thread    service thread. Not in a callback of the log or of the runtime: a function of a module
 *           may be running then, and would continue with a destroyed service
 * lifetime  pointers that the modules returned are no longer valid
 * errors    when a cleanup function fails, the runtime writes one line to standard error and runs
 *           the other cleanup functions
 */
VORLEN_RUNTIME_API void Vorlen_Shutdown(void);

/*
 * Writes the version that the named module registered, or registered last.
 *
 * name                  terminated text, such as "monitor"
 * major, minor, patch   destinations, owned by the caller; not NULL
 * returns   true when the version was written; false, with nothing written, when no module
 *           registered under the name
 * thread    service thread
 * lifetime  copies
 * errors    none
 */
VORLEN_RUNTIME_API bool Vorlen_GetModuleVersion(const char* name, int32_t* major, int32_t* minor,
                                                int32_t* patch);

#ifdef __cplusplus
}
#endif

#endif /* VORLEN_RUNTIME_HOST_H */
