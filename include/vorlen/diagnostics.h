/*
 * vorlen/diagnostics.h - what support tools ask libvorlen_monitor.dll beyond vorlen/monitor.h.
 *
 * Plain C; in C++ the functions live in vorlen::monitor_internal.
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
 * returns   a code of the kit (vorlen/status.h): 16 passed, 17 no kit monitor, 18 resolution,
 *           19 refresh rate; -1 before the first check
 * thread    service thread; also without a service
 * lifetime  kept until the next check or until the library is unloaded
 * errors    none
 */
VORLEN_MONITOR_API int32_t getLastMonitorStatus(void);

/*
 * Writes the monitor that the last checkMonitorStatus() judged, as it is listed now.
 *
 * item      one record, owned by the caller; not NULL
 * returns   true when it was written; false, with nothing written, when the check judged no
 *           monitor, when the monitor is no longer listed, and without a service
 * thread    service thread; never reads the monitors
 * lifetime  the record is the caller's
 * errors    none
 */
VORLEN_MONITOR_API bool getCheckedMonitor(MonitorListItem* item);

/*
 * Why a window is not capturable, so that it cannot be shown on the kit's monitor. Looks at the window as it is now.
 *
 * window    HWND, borrowed; of any process; need not be valid
 * returns   the name of the first test of the capture filter that excludes the window, such as
 *           "disabled"; NULL when the window is capturable
 * thread    any thread, with or without a service; waits for the window's thread when the window
 *           belongs to the calling process
 * lifetime  the text is a constant of the library, valid until it is unloaded
 * errors    exhausted memory leaves as the C++ exception std::bad_alloc
 */
VORLEN_MONITOR_API const char* getReasonNotCapturable(void* window);

/*
 * Reads the list of windows again, for a host that cannot rely on events alone (getWindowList in
 * vorlen/monitor.h says what they miss): ends the list and its event hook, and makes a new list of
 * the windows that are capturable now, in the system's order and with their present titles. The new
 * list follows events in the same way. Combo boxes that the runtime registered for updates belong
 * to the old list: they keep their entries and are no longer updated. Register them again through
 * the runtime's table.
 *
 * returns   true when the list was restarted; false, with nothing done, while the runtime has
 *           switched the list off, without a service, or on another thread than the service thread
 * thread    service thread; waits for the threads of the host's own windows, as
 *           Vorlen_Initialize() does
 * lifetime  handles that the list gave before may no longer be listed
 * errors    exhausted memory leaves as the C++ exception std::bad_alloc. The list is off then:
 *           getWindowList returns its last records, this function returns false, and
 *           useWindowList(true) of the runtime's table switches the list on again. Where the system
 *           refuses the new event hook, the result is true and the list stays as it was read:
 *           another restart tries again
 */
VORLEN_MONITOR_API bool restartWindowList(void);

#ifdef __cplusplus
} /* extern "C" */
} /* namespace vorlen::monitor_internal */
#endif

#endif /* VORLEN_DIAGNOSTICS_H */
