/*
 * vorlen/monitor.h - what a host application calls in libvorlen_monitor.dll.
 *
 * A host loads vorlen_runtime.dll and libvorlen_monitor.dll, calls Vorlen_Initialize() of the
 * runtime on one thread (the service thread), calls the functions below on that thread, calls
 * Vorlen_Shutdown() on that thread, and unloads both libraries.
 *
 * Threads: every function of this header belongs to the service thread. Nothing is locked. A call
 * that reads the monitors and finds a new one starts a thread, which queries WMI, and waits for
 * it: do not make such a call, nor call Vorlen_Initialize(), from DllMain.
 *
 * Waiting: a slow or hung WMI blocks the service thread until WMI answers. Vorlen_Initialize() and
 * every event that shows a window read titles. For the title of a window of the host's process,
 * Windows waits for the window's thread. A thread of the host that owns windows and waits, without
 * processing messages, for Vorlen_Initialize() on another thread deadlocks.
 *
 * Errors: no function returns an error code. Before Vorlen_Initialize() and after
 * Vorlen_Shutdown() every function of this header returns the neutral value that it documents and
 * writes nothing. Data that the system does not provide is left out of a list, empty, or 0.
 *
 * Exceptions: exhausted memory, a thread that cannot be started and failures of the runtime are
 * thrown as C++ exceptions. Only a C++ host built with the library's toolchain can catch them. With
 * Microsoft's compiler the host needs the options /EHs /EHc- and /MD: built with the usual /EHsc it
 * cannot catch them, because the compiler assumes that functions of C linkage do not throw.
 * Exhausted memory for a string that WMI takes is thrown as _com_error with E_OUTOFMEMORY, which is
 * no std::exception. With GCC and Clang, each exception of the library that the host catches makes
 * std::uncaught_exceptions(), called by the host on that thread, lower by one from then on: compare
 * two of its values, and do not use a single value.
 *
 * COM: a host that sets the COM security of its process (CoInitializeSecurity) must do so before
 * Vorlen_Initialize(). Otherwise the library sets it, to the defaults, until the process ends.
 *
 * Units: positions and sizes are physical pixels of the current display mode in desktop
 * coordinates, whatever the DPI awareness of the process. Refresh rates are whole hertz as the
 * display driver reports them (59.94 Hz reads 59; 0 and 1 mean the hardware's default).
 */
#ifndef VORLEN_MONITOR_H
#define VORLEN_MONITOR_H

#include <stddef.h>
#include <stdint.h>

#ifndef __cplusplus
#include <stdbool.h>
#endif

#if defined(_WIN32) && defined(VORLEN_MONITOR_BUILD)
#define VORLEN_MONITOR_API __declspec(dllexport)
#elif defined(_WIN32)
#define VORLEN_MONITOR_API __declspec(dllimport)
#else
#define VORLEN_MONITOR_API
#endif

/* One UTF-16 code unit: wchar_t on Windows, so that texts can be passed to wide functions. */
#ifdef _WIN32
typedef wchar_t VLChar16;
#else
typedef uint16_t VLChar16;
#endif

/* Code units of a text field, the terminating zero included. Longer texts are cut at 127 units. */
#define VORLEN_MONITOR_TEXT_UNITS 128

/*
 * One monitor. Every text is terminated; the rest of its field is zeros.
 *
 * Of cloned outputs, the first display path gives friendlyName and monitorId. After sleep and in
 * remote sessions both can be empty until the next refresh. WMI is asked once for each monitor: a
 * serial number that it did not return stays empty until the library is loaded again.
 */
typedef struct MonitorListItem {
    void* handle;                                     /* HMONITOR, borrowed from the system */
    VLChar16 deviceName[VORLEN_MONITOR_TEXT_UNITS];   /* display device, such as \\.\DISPLAY1 */
    VLChar16 friendlyName[VORLEN_MONITOR_TEXT_UNITS]; /* name of the model; empty when unknown */
    VLChar16 monitorId[VORLEN_MONITOR_TEXT_UNITS];    /* serial number text; empty when unknown */
    int32_t x;                                        /* left edge, pixels, desktop coordinates */
    int32_t y;                                        /* top edge, pixels, desktop coordinates */
    int32_t width;                                    /* pixels */
    int32_t height;                                   /* pixels */
    int32_t refreshRate;                              /* hertz */
    /* 4 bytes of padding; the library does not write them */
} MonitorListItem;

/* One capturable window: it can be shown on the kit monitor. */
typedef struct WindowListItem {
    void* handle;                                  /* HWND, borrowed from the system */
    VLChar16 title[VORLEN_MONITOR_TEXT_UNITS];     /* as it was when the window was added */
    VLChar16 className[VORLEN_MONITOR_TEXT_UNITS]; /* name of the window class */
} WindowListItem;

/*
 * A monitor's top-left corner in desktop coordinates and its size, in pixels. It has no right and
 * bottom edge.
 * Given: the name, although C reserves names that begin like it.
 */
typedef struct _VLRect {
    int32_t x;
    int32_t y;
    int32_t width;
    int32_t height;
} _VLRect;

#ifdef __cplusplus
extern "C" {
#endif

/*
 * Checks the kit monitor: the first monitor that the runtime recognises as a kit model. It must be
 * set up with at least 3840 x 2160 pixels and 59 Hz; in portrait (2160 x 3840) it does not pass.
 * getLastMonitorStatus of vorlen/diagnostics.h and the runtime's log give the reason.
 *
 * returns   true when the kit monitor passes; false when it does not, when the runtime recognises
 *           no monitor, and without a service
 * thread    service thread; reads the monitors again first when their list is 500 ms old or empty
 * lifetime  the outcome is kept until the next check
 * errors    exceptions as described at the head of this header, and std::range_error when the name
 *           or the serial number of the kit monitor is not valid UTF-16
 */
VORLEN_MONITOR_API bool checkMonitorStatus(void);

/*
 * Copies the monitors of the desktop, in the system's order, into the caller's array. The number
 * of monitors can change between a size query and the copy: use the number that the copy returns.
 *
 * items     array of at least min(capacity, number of monitors) records, owned by the caller, or
 *           NULL to query only the number of monitors
 * capacity  number of records in items; ignored when items is NULL
 * returns   with items NULL the number of monitors; else the number of records written. A negative
 *           capacity is returned unchanged and nothing is written. 0 without a service
 * thread    service thread; reads the monitors again first when their list is 500 ms old or empty
 * lifetime  the records are the caller's; handles are valid while the monitor is attached
 * errors    exceptions as described at the head of this header; nothing is written then
 */
VORLEN_MONITOR_API int getMonitorList(MonitorListItem* items, int32_t capacity);

/*
 * Copies the capturable windows, in the order in which they were added to the list, into the
 * caller's array. Titles come from other programs: do not trust them.
 *
 * items, capacity, returns: as for getMonitorList
 * thread    service thread. The list follows the desktop while that thread retrieves messages
 *           (GetMessage, PeekMessage or a modal loop); if it never does, the list stays as it was
 *           read by Vorlen_Initialize()
 * lifetime  the records are the caller's; handles are valid until the window is destroyed
 * errors    exceptions as described at the head of this header; nothing is written then
 *
 * A window is added to the list when it is shown or uncloaked, and removed only when it is
 * destroyed. A listed window that is hidden, disabled or renamed keeps its record. Events do not
 * report every change:
 * - Windows sends the destruction event also when the caret of a window is destroyed. A console or
 *   an editor can therefore be removed from the list until it is shown again.
 * - A window that gets its title, or is enabled, after it was shown is not added.
 * - A window that is hidden or cloaked is not removed.
 * - A window whose destruction was not reported is not removed. If Windows gives its handle to
 *   another window, the other window is listed with the old title.
 * restartWindowList of vorlen/diagnostics.h reads the list again and corrects it. Ordinary windows
 * of other virtual desktops are listed even after a restart.
 */
VORLEN_MONITOR_API int getWindowList(WindowListItem* items, int32_t capacity);

/*
 * The name of the current monitor, as the runtime holds it.
 * Given: the function's name. getVorlenMonitorModelName returns the model name.
 *
 * returns   a terminated text of the runtime; NULL without a service
 * thread    service thread; reads the monitors again first when their list is 500 ms old or empty
 * lifetime  valid until the runtime changes or drops the text: copy it before the next call
 * errors    exceptions as described at the head of this header
 */
VORLEN_MONITOR_API const char* getMonitorModelName(void);

/*
 * The model name that the runtime holds for the kit monitor.
 *
 * returns   a terminated text of the runtime; NULL without a service
 * thread    service thread; never reads the monitors
 * lifetime  valid until the runtime changes or drops the text: copy it before the next call
 * errors    none
 */
VORLEN_MONITOR_API const char* getVorlenMonitorModelName(void);

/*
 * Sets the model name that the runtime holds for the kit monitor. Does nothing without a service.
 *
 * name      length bytes; need not be terminated; zero bytes inside are kept; may be NULL when
 *           length is 0
 * length    number of bytes, 0 or more
 * thread    service thread; never reads the monitors
 * lifetime  the bytes are copied
 * errors    throws the C++ exception std::length_error when length is negative; the model name
 *           stays unchanged then. Others as described at the head of this header
 */
VORLEN_MONITOR_API void setVorlenMonitorModelName(const char* name, int32_t length);

/*
 * The rectangle of the runtime's current monitor.
 *
 * returns   position and size; all zeros when the current monitor is not listed, and
 *           without a service
 * thread    service thread; reads the monitors again first when their list is 500 ms old or empty
 * lifetime  a copy
 * errors    exceptions as described at the head of this header
 */
VORLEN_MONITOR_API _VLRect getMonitorRect(void);

/*
 * Reads the monitors at once, whatever the age of their list, and passes them to the runtime. For
 * a host that received WM_DISPLAYCHANGE. Does nothing without a service.
 *
 * thread    service thread
 * lifetime  texts that the name functions returned before are no longer valid
 * errors    exceptions as described at the head of this header; the next function that needs the
 *           monitors reads them again then
 */
VORLEN_MONITOR_API void updateMonitorList(void);

#ifdef __cplusplus
}
#endif

/* A host whose compiler lays out the records differently does not compile. */
#ifdef __cplusplus
#define VORLEN_MONITOR_LAYOUT(name, condition) static_assert(condition, #name)
#else
#define VORLEN_MONITOR_LAYOUT(name, condition) typedef char vorlen_##name[(condition) ? 1 : -1]
#endif

VORLEN_MONITOR_LAYOUT(text_unit_is_16_bit, sizeof(VLChar16) == 2);
VORLEN_MONITOR_LAYOUT(monitor_stride, sizeof(MonitorListItem) == 800);
VORLEN_MONITOR_LAYOUT(monitor_handle, offsetof(MonitorListItem, handle) == 0);
VORLEN_MONITOR_LAYOUT(monitor_device_name, offsetof(MonitorListItem, deviceName) == 8);
VORLEN_MONITOR_LAYOUT(monitor_friendly_name, offsetof(MonitorListItem, friendlyName) == 264);
VORLEN_MONITOR_LAYOUT(monitor_id, offsetof(MonitorListItem, monitorId) == 520);
VORLEN_MONITOR_LAYOUT(monitor_x, offsetof(MonitorListItem, x) == 776);
VORLEN_MONITOR_LAYOUT(monitor_y, offsetof(MonitorListItem, y) == 780);
VORLEN_MONITOR_LAYOUT(monitor_width, offsetof(MonitorListItem, width) == 784);
VORLEN_MONITOR_LAYOUT(monitor_height, offsetof(MonitorListItem, height) == 788);
VORLEN_MONITOR_LAYOUT(monitor_refresh_rate, offsetof(MonitorListItem, refreshRate) == 792);
VORLEN_MONITOR_LAYOUT(window_stride, sizeof(WindowListItem) == 520);
VORLEN_MONITOR_LAYOUT(window_handle, offsetof(WindowListItem, handle) == 0);
VORLEN_MONITOR_LAYOUT(window_title, offsetof(WindowListItem, title) == 8);
VORLEN_MONITOR_LAYOUT(window_class_name, offsetof(WindowListItem, className) == 264);
VORLEN_MONITOR_LAYOUT(rect_size, sizeof(_VLRect) == 16);
VORLEN_MONITOR_LAYOUT(rect_x, offsetof(_VLRect, x) == 0);
VORLEN_MONITOR_LAYOUT(rect_y, offsetof(_VLRect, y) == 4);
VORLEN_MONITOR_LAYOUT(rect_width, offsetof(_VLRect, width) == 8);
VORLEN_MONITOR_LAYOUT(rect_height, offsetof(_VLRect, height) == 12);

#undef VORLEN_MONITOR_LAYOUT

#endif /* VORLEN_MONITOR_H */
