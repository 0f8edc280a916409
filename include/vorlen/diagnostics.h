/*
 * vorlen/diagnostics.h - functions of libvorlen_monitor.dll for support tools.
 *
 * Plain C; in C++ the functions live in vorlen::monitor_internal. Which hosts can catch exceptions:
 * see vorlen/monitor.h, "Exceptions".
 */
#ifndef VORLEN_DIAGNOSTICS_H
#define VORLEN_DIAGNOSTICS_H

#include "vorlen/monitor.h"

#ifdef __cplusplus
namespace vorlen::monitor_internal {
extern "C" {
#endif

/*
 * The outcome of the last checkMonitorStatus() since the library was loaded.
 *
 * returns   a status code of the kit (vorlen/status.h): 16 passed, 17 no kit monitor, 18
 *           resolution, 19 refresh rate; -1 before the first check
 * thread    service thread, with or without a service
 * lifetime  kept until the next check or until the library is unloaded
 * errors    none
 */
VORLEN_MONITOR_API int32_t getLastMonitorStatus(void);

/*
 * Writes the monitor that the last checkMonitorStatus() judged, as it is listed now.
 *
 * item      one record, owned by the caller; not NULL
 * returns   true when the record was written; false, with nothing written, when the check judged
 *           no monitor, when the monitor is no longer listed, and without a service
 * thread    service thread; never reads the monitors
 * lifetime  the record is the caller's
 * errors    none
 */
VORLEN_MONITOR_API bool getCheckedMonitor(MonitorListItem* item);

/*
 * The reason why a window is not capturable: why it cannot be shown on the kit monitor. Examines
 * the window as it is now.
 *
 * window    HWND, borrowed; of any process; need not be valid
 * returns   the reason of the first rule of the capture filter that excludes the window, such as
 *           "disabled"; NULL when the window is capturable
 * thread    any thread, with or without a service; waits for the window's thread when the window
 *           belongs to the calling process
 * lifetime  the text is a constant of the library, valid until the library is unloaded
 * errors    throws the C++ exception std::bad_alloc when memory is exhausted
 */
VORLEN_MONITOR_API const char* getReasonNotCapturable(void* window);

/*
 * Replaces the window list by a new one, for a host that cannot rely on events alone
 * (getWindowList in vorlen/monitor.h lists what events do not report). Ends the old list with its
 * event hook, and reads the windows that are capturable now, in the system's order and with their
 * present titles. The new list follows events in the same way. Combo boxes that the runtime
 * registered for updates belong to the old list: they keep their entries and are no longer
 * updated. Register them again through the runtime's table.
 *
 * returns   true when the list was replaced; false, with nothing done, while the runtime has
 *           switched the list off, without a service, and on a thread other than the service
 *           thread
 * thread    service thread; waits for the threads of the host's own windows, as
 *           Vorlen_Initialize() does
 * lifetime  windows that were listed before may not be in the new list
 * errors    throws the C++ exception std::bad_alloc when memory is exhausted. The list is off
 *           then: getWindowList returns its last records, this function returns false, and
 *           useWindowList(true) of the runtime's table switches the list on again. If the system
 *           installs no event hook for the new list, the result is true and the list does not
 *           change until another restart succeeds
 */
VORLEN_MONITOR_API bool restartWindowList(void);

#ifdef __cplusplus
} /* extern "C" */
} /* namespace vorlen::monitor_internal */
#endif

#endif /* VORLEN_DIAGNOSTICS_H */
