// The runtime as a module sees it while it registers.
#pragma once

#include "vorlen/runtime.h"

#include <windows.h>

#include <cstdint>
#include <string>
#include <vector>

namespace vorlen {

namespace ui {
struct MonitorInfo;
struct WindowInfo;
} // namespace ui

// The functions through which the runtime reaches a monitor module's service, in the order that is
// the table's layout. All belong to the service thread. The lists of windows and monitors are the
// module's own and valid until their next refresh; names and model lists are the core's. Without a
// service they are empty. The list of windows must not be switched off while it tells a combo box.
struct MonitorWrapper {
    const std::vector<ui::WindowInfo>& (*getWindowList)();
    const std::vector<ui::MonitorInfo>& (*getMonitorList)();
    const char* (*getCurrentMonitorName)();
    const std::vector<std::string>& (*getVorlenModelName)(const char* deviceName);
    const std::vector<std::string>& (*getVorlenModelNameWide)(const wchar_t* deviceName);
    void (*setVorlenModelName)(const char* modelName);
    const char* (*getVorlenCameraName)(const char* modelName);
    void (*useWindowList)(bool use);
};

// The functions that work on the calling thread's own lists of monitors and windows; on a thread
// that has none they do nothing or return null. Combo boxes stay the caller's.
struct WindowEnumWrapper {
    void (*updateMonitorList)();
    void (*registerWindowComboBox)(HWND comboBox);
    void (*registerMonitorComboBox)(HWND comboBox);
    HWND (*getWindowHandle)(std::int32_t index);
    HMONITOR (*getMonitorHandle)(std::int32_t index);
};

namespace runtime_internal {

// Copies the table during the call; a later registration replaces it.
VORLEN_RUNTIME_API void RegisterMonitorWrapper(const MonitorWrapper& wrapper);
VORLEN_RUNTIME_API void RegisterWindowEnumWrapper(const WindowEnumWrapper& wrapper);

// The registered table, or null while none is registered or when its module has been unloaded.
VORLEN_RUNTIME_API const MonitorWrapper* GetMonitorWrapper();
VORLEN_RUNTIME_API const WindowEnumWrapper* GetWindowEnumWrapper();

} // namespace runtime_internal
} // namespace vorlen

extern "C" {

// Called by a module while it is being loaded. Names are copied; functions are called on the
// service thread, and never after their module has been unloaded. A runtime must not call init
// while a module registers: Windows holds the loader's lock then, under which the thread that init
// may start and wait for cannot start. Nor may it call cleanup, or let its callbacks do so, while
// a function of the module runs.
VORLEN_RUNTIME_API void Vorlen_RegisterModuleVersion(const char* name, std::int32_t major,
                                                     std::int32_t minor, std::int32_t patch);
VORLEN_RUNTIME_API void Vorlen_RegisterModuleInit(void (*init)());
VORLEN_RUNTIME_API void Vorlen_RegisterModuleCleanup(void (*cleanup)());
}
