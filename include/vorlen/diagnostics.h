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
 * The outcome of the last checkMonitorStatus() since the library was loaded, a code of the kit
 * (vorlen/status.h): 16 passed, 17 no kit monitor, 18 resolution, 19 refresh rate; -1 before the
 * first check. Service thread; also without a service.
 */
VORLEN_MONITOR_API int32_t getLastMonitorStatus(void);

/*
 * Writes the monitor that the last checkMonitorStatus() judged, as it is listed now, and returns
 * true; returns false and writes nothing when it judged none, when the monitor has gone or without
 * a service. item must not be NULL. Service thread; never reads the list anew.
 */
VORLEN_MONITOR_API bool getCheckedMonitor(MonitorListItem* item);

/*
 * Why a window is not offered for showing on the kit's monitor: the name of the first test of the
 * capture filter that keeps it out, such as "disabled", or NULL when it may be offered.
 *
 * window    HWND, borrowed; of any process; need not be valid
 * returns   a constant of the library, valid until it is unloaded
 *
 * Looks at the window as it is now. Any thread, with or without a service; waits for the window's
 * thread when the window belongs to the calling process.
 */
VORLEN_MONITOR_API const char* getWindowRefusal(void* window);

/*
 * Reads the list of windows again, for a host that cannot rely on events alone (getWindowList in
 * vorlen/monitor.h says what they miss): ends the list and its event hook, and makes a new list of
 * the windows that may be offered now, in the system's order and with their present titles. The new
 * list follows events in the same way.
 *
 * returns   true when the list was restarted; false, with nothing done, while the runtime has
 *           switched the list off, without a service, or on another thread than the service thread
 *
 * Combo boxes that the runtime registered for updates belong to the old list: they keep their
 * entries and are no longer updated. Register them again through the runtime's table.
 *
 * Exhausted memory leaves as the C++ exception std::bad_alloc. The list is off then: getWindowList
 * returns its last records, this function returns false, and useWindowList(true) of the runtime's
 * table switches the list on again. Where the system refuses the new event hook, the result is
 * true and the list stays as it was read: another restart tries again.
 *
 * Waits for the threads of the host's own windows, as Vorlen_Initialize() does.
 */
VORLEN_MONITOR_API bool restartWindowList(void);

#ifdef __cplusplus
} /* extern "C" */
} /* namespace vorlen::monitor_internal */
#endif

#endif /* VORLEN_DIAGNOSTICS_H */
