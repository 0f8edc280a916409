/*
 * vorlen/monitor.h - what a host application calls in libvorlen_monitor.dll.
 *
 * Order of a host's life: load vorlen_runtime.dll and libvorlen_monitor.dll, call
 * Vorlen_Initialize() of the runtime on one thread (the service thread), call the functions below
 * on that thread, call Vorlen_Shutdown() there, unload.
 *
 * Threads: nothing here is locked. Every function belongs to the service thread. A call that reads
 * the monitors anew waits for WMI, on a thread of its own, when it sees a monitor for the first
 * time: do not call it, nor Vorlen_Initialize(), from DllMain.
 * Waiting: a slow or hung WMI blocks the service thread for as long. Vorlen_Initialize() and every
 * event that shows a window read titles, for which Windows asks the threads of the host's own
 * windows. A UI thread that waits for Vorlen_Initialize() on another thread deadlocks with it,
 * until the UI thread processes messages.
 * Errors: none is reported. Before Vorlen_Initialize() and after Vorlen_Shutdown() every function
 * returns the neutral value that it documents and writes nothing. What the system does not tell is
 * left out of a list, empty, or 0. Exhausted memory, a thread that cannot be started and failures
 * of the runtime leave as C++ exceptions, which only a C++ host built with the library's toolchain
 * can catch. With GCC and Clang, std::uncaught_exceptions() of that thread counts one too few in
 * the host after each exception that it has caught from the library: compare two of its values, and
 * do not use a value alone.
 * COM: a host that sets the security of its process (CoInitializeSecurity) does so before
 * Vorlen_Initialize(). The library sets it otherwise, to the defaults, for the life of the process.
 * Units: positions and sizes are physical pixels of the current display mode in desktop
 * coordinates, whatever the DPI awareness of the process; refresh rates are whole hertz as the
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

/* One UTF-16 code unit: on Windows wchar_t, so that a text goes straight into wide functions. */
#ifdef _WIN32
typedef wchar_t VLChar16;
#else
typedef uint16_t VLChar16;
#endif

/* Code units of a text field, the terminating zero included. Longer texts are cut at 127 units. */
#define VORLEN_MONITOR_TEXT_UNITS 128

/*
 * One monitor. Every text is terminated, and zero behind its end.
 *
 * Of cloned outputs, only the first display path gives friendlyName and monitorId. Both can be
 * empty after resume and in remote sessions, until the next refresh. A serial number that WMI did
 * not give the first time it was asked stays empty until the library is loaded again.
 */
typedef struct MonitorListItem {
    void* handle;                                     /* HMONITOR, borrowed from the system */
    VLChar16 deviceName[VORLEN_MONITOR_TEXT_UNITS];   /* display device, such as \\.\DISPLAY1 */
    VLChar16 friendlyName[VORLEN_MONITOR_TEXT_UNITS]; /* name of the model; empty when unknown */
    VLChar16 monitorId[VORLEN_MONITOR_TEXT_UNITS];    /* serial number text; empty when unknown */
    int32_t x;                                        /* left edge on the desktop, pixels */
    int32_t y;                                        /* top edge on the desktop, pixels */
    int32_t width;                                    /* pixels */
    int32_t height;                                   /* pixels */
    int32_t refreshRate;                              /* hertz */
    /* 4 bytes of padding, which the library never writes */
} MonitorListItem;

/* One window that can be shown on the kit's monitor. */
typedef struct WindowListItem {
    void* handle;                                  /* HWND, borrowed from the system */
    VLChar16 title[VORLEN_MONITOR_TEXT_UNITS];     /* as it was when the window appeared */
    VLChar16 className[VORLEN_MONITOR_TEXT_UNITS]; /* name of the window class */
} WindowListItem;

/*
 * A monitor's top-left corner on the desktop and its size, in pixels; no right/bottom pair.
 * Given: the kit's name for it, although C reserves such names.
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
 * Whether the first monitor that the runtime recognises as one of the kit's is set up as the kit
 * needs it: at least 3840 x 2160 pixels and 59 Hz. In portrait, 2160 x 3840, it fails. The reason
 * is in getLastMonitorStatus of vorlen/diagnostics.h and in the runtime's log.
 *
 * returns   true when it is; false when it is not, when no monitor is recognised, and without a
 *           service
 * thread    service thread; reads the monitors again first when their list is 500 ms old or empty
 * lifetime  the outcome is kept until the next check
 * errors    a monitor name that is not valid UTF-16 leaves as the C++ exception std::range_error
 */
VORLEN_MONITOR_API bool checkMonitorStatus(void);

/*
 * Copies the monitors of the desktop, in the system's order, into the caller's array. Between a
 * size query and the copy the number can change: use what the copy returns.
 *
 * items     array of at least min(capacity, number of monitors) records, owned by the caller, or
 *           NULL to ask for the number of monitors only
 * capacity  number of records in items; not looked at when items is NULL
 * returns   with items NULL the number of monitors; else the number of records written, or
 *           capacity itself, with nothing written, when that is negative. 0 without a service
 * thread    service thread; reads the monitors again first when their list is 500 ms old or empty
 * lifetime  the records are the caller's; handles are valid while the monitor is attached
 * errors    those at the head of this file; nothing is written then
 */
VORLEN_MONITOR_API int getMonitorList(MonitorListItem* items, int32_t capacity);

/*
 * Copies the windows that can be shown on the kit's monitor, in the order in which they appeared,
 * into the caller's array. Titles come from other programs: do not trust them.
 *
 * items, capacity, returns: as for getMonitorList
 * thread    service thread. The list follows the desktop while that thread retrieves messages
 *           (GetMessage, PeekMessage or a modal loop); without that it stays as it was at
 *           Vorlen_Initialize()
 * lifetime  the records are the caller's; handles are valid until the window is destroyed
 * errors    those at the head of this file; nothing is written then
 *
 * Windows enter the list when they are shown or uncloaked and leave it only when they are
 * destroyed; hidden, disabled and renamed ones stay as they were. Events do not report everything:
 * - Windows sends the event of a destruction also when a window's caret is destroyed: a console or
 *   an editor can leave the list until it is shown again.
 * - A window that gets its title, or is enabled, after it was shown is not added.
 * - A window that is hidden or cloaked stays. So does one whose destruction was not reported; if
 *   Windows gives its handle to another window, that one is listed with the old title.
 * restartWindowList of vorlen/diagnostics.h reads the list again and so corrects it. Ordinary
 * windows of other virtual desktops are listed even then.
 */
VORLEN_MONITOR_API int getWindowList(WindowListItem* items, int32_t capacity);

/*
 * The name of the current monitor, as the runtime holds it.
 * Given: despite its name it does not return the model name, which getVorlenMonitorModelName does.
 *
 * returns   a terminated text of the runtime; NULL without a service
 * thread    service thread; reads the monitors again first when their list is 500 ms old or empty
 * lifetime  valid until the runtime changes or drops the text: copy it before the next call
 * errors    those at the head of this file
 */
VORLEN_MONITOR_API const char* getMonitorModelName(void);

/*
 * The model name that the runtime holds for the kit's monitor.
 *
 * returns   a terminated text of the runtime; NULL without a service
 * thread    service thread; never reads the monitors
 * lifetime  valid until the runtime changes or drops the text: copy it before the next call
 * errors    none
 */
VORLEN_MONITOR_API const char* getVorlenMonitorModelName(void);

/*
 * Gives the runtime the model name of the kit's monitor. Does nothing without a service.
 *
 * name      length bytes; need not be terminated, zero bytes inside are kept; may be NULL when
 *           length is 0
 * length    number of bytes, 0 or more
 * thread    service thread; never reads the monitors
 * lifetime  the bytes are copied
 * errors    a negative length leaves as the C++ exception std::length_error; the name stays then
 */
VORLEN_MONITOR_API void setVorlenMonitorModelName(const char* name, int32_t length);

/*
 * The rectangle of the runtime's current monitor.
 *
 * returns   position and size; all zeros when the current monitor is not listed, and
 *           without a service
 * thread    service thread; reads the monitors again first when their list is 500 ms old or empty
 * lifetime  a copy
 * errors    those at the head of this file
 */
VORLEN_MONITOR_API _VLRect getMonitorRect(void);

/*
 * Reads the monitors again at once, whatever the age of their list, and gives them to the runtime:
 * for a host that got WM_DISPLAYCHANGE. Does nothing without a service.
 *
 * thread    service thread
 * lifetime  ends that of the texts that the name functions returned
 * errors    those at the head of this file; the next function that needs the monitors reads them
 *           again then
 */
VORLEN_MONITOR_API void updateMonitorList(void);

#ifdef __cplusplus
}
#endif

/* The layout is the interface: a host compiled otherwise must not compile at all. */
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
