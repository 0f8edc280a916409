/*
 * The runtime as a host application sees it: plain C.
 *
 * A module is compiled against the VorlenCore class of one runtime. libvorlen_monitor.dll as built
 * here fits the runtime built here: for the kit's own runtime it must be rebuilt with the kit's own
 * header in place of runtime/core.h.
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
 * thread, which thereby becomes the service thread of the modules. A second call is harmless: it
 * reaches modules that were loaded since the first.
 *
 * returns   true when all of them succeeded; false when one failed
 * thread    any one thread, but not while a library is being loaded, as in DllMain: a module may
 *           start a thread and wait for it, and Windows starts no thread until the library is
 *           loaded. Do not wait for it on a thread that has windows without processing messages:
 *           vorlen/monitor.h says why
 * lifetime  the modules run until Vorlen_Shutdown()
 * errors    when an init fails, one line on standard error says so, and the cleanup functions run
 *           in reverse order
 */
VORLEN_RUNTIME_API bool Vorlen_Initialize(void);

/*
 * Runs the cleanup function of every registered module, in reverse order. Harmless without
 * Vorlen_Initialize(), and twice.
 *
 * thread    service thread. Not in a callback of the log or of the runtime: a function of a module
 *           may be running then, and would go on with a service that is destroyed
 * lifetime  ends that of everything that the modules returned
 * errors    when a cleanup fails, one line on standard error says so, and the others run
 */
VORLEN_RUNTIME_API void Vorlen_Shutdown(void);

/*
 * Writes the version that the named module registered, the last one if it registered several times.
 *
 * name                  terminated text, such as "monitor"
 * major, minor, patch   destinations, owned by the caller; none may be NULL
 * returns   true when they were written; false, with nothing written, for a name that no module
 *           registered
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
