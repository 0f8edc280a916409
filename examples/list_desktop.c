/*
 * A minimal host: starts the service, prints the monitors of the desktop and the capturable
 * windows, ends the service. It is linked to both libraries, which must be in its folder when it
 * runs.
 */
#include "vorlen/monitor.h"
#include "vorlen/runtime.h"

#include <fcntl.h>
#include <io.h>
#include <stdio.h>
#include <stdlib.h>
#include <wctype.h>

static int fail(const wchar_t* message) {
    (void)fwprintf(stderr, L"list_desktop: %ls\n", message);
    return EXIT_FAILURE;
}

/* Texts come from other programs and devices, and control characters would drive a terminal. */
static const VLChar16* printable(VLChar16* text) {
    for (VLChar16* unit = text; *unit != 0; ++unit) {
        if (iswcntrl(*unit)) {
            *unit = L'?';
        }
    }
    return text;
}

static void print_monitor(MonitorListItem* monitor) {
    wprintf(L"%ls (%ls): %dx%d at %d,%d, %d Hz, handle 0x%llx\n", monitor->deviceName,
            printable(monitor->friendlyName), monitor->width, monitor->height, monitor->x,
            monitor->y, monitor->refreshRate, (unsigned long long)(uintptr_t)monitor->handle);
}

static int list_monitors(void) {
    const int size = getMonitorList(NULL, 0); /* the number of monitors */
    /* One record more, because calloc() of 0 bytes may return NULL. */
    MonitorListItem* const monitors = calloc((size_t)size + 1, sizeof *monitors);
    if (monitors == NULL) {
        return fail(L"not enough memory for the list of monitors; close some programs");
    }
    /* The number of monitors may have changed: this call returns how many it has copied. */
    const int count = getMonitorList(monitors, size);
    for (int i = 0; i < count; ++i) {
        print_monitor(&monitors[i]);
    }
    free(monitors);
    return EXIT_SUCCESS;
}

static void print_window(WindowListItem* window) {
    wprintf(L"%ls (%ls), handle 0x%llx\n", printable(window->title), printable(window->className),
            (unsigned long long)(uintptr_t)window->handle);
}

static int list_windows(void) {
    const int size = getWindowList(NULL, 0);
    WindowListItem* const windows = calloc((size_t)size + 1, sizeof *windows);
    if (windows == NULL) {
        return fail(L"not enough memory for the list of windows; close some programs");
    }
    const int count = getWindowList(windows, size);
    for (int i = 0; i < count; ++i) {
        print_window(&windows[i]);
    }
    free(windows);
    return EXIT_SUCCESS;
}

int main(void) {
    /* UTF-16 on a console, UTF-8 in files and pipes. Without a buffer, numbers are split. */
    _setmode(_fileno(stdout), _O_U8TEXT);
    (void)setvbuf(stdout, NULL, _IOFBF, BUFSIZ);

    if (!Vorlen_Initialize()) {
        return EXIT_FAILURE; /* the runtime has written the reason to standard error */
    }
    int result = list_monitors();
    if (result == EXIT_SUCCESS) {
        result = list_windows();
    }
    Vorlen_Shutdown();

    if (fflush(stdout) != 0 || ferror(stdout)) {
        return fail(L"cannot write to standard output; send it elsewhere");
    }
    return result;
}
