/* Loads both libraries from the folder that it is given. */
#include "vorlen/monitor.h"
#include "vorlen/runtime.h"

#include <windows.h>

#include <stdio.h>

/* A compiler accepts any conversion of function pointers by way of this type. */
typedef void (*Function)(void);

typedef bool (*Initialize)(void);
typedef void (*Shutdown)(void);
typedef int (*GetMonitorList)(MonitorListItem* items, int32_t capacity);

static void* load(const char* folder, const char* file) {
    char path[1024];
    (void)snprintf(path, sizeof path, "%s\\%s", folder, file);
    return LoadLibraryA(path);
}

int main(int count, char** arguments) {
    if (count != 2) {
        return 2;
    }
    HMODULE runtime = load(arguments[1], "vorlen_runtime.dll");
    HMODULE module = load(arguments[1], "libvorlen_monitor.dll");
    if (runtime == NULL || module == NULL) {
        return 3;
    }
    if (!((Initialize)(Function)GetProcAddress(runtime, "Vorlen_Initialize"))()) {
        return 1;
    }
    printf("%d\n", ((GetMonitorList)(Function)GetProcAddress(module, "getMonitorList"))(NULL, 0));
    ((Shutdown)(Function)GetProcAddress(runtime, "Vorlen_Shutdown"))();
    FreeLibrary(module);
    FreeLibrary(runtime);
    return 0;
}
