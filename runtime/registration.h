// What a module calls in vorlen_runtime.dll to register itself.
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

// The functions through which the runtime uses a monitor module's service. Their order is the
// layout of the table. All belong to the service thread. The module owns the returned lists of
// windows and monitors, which are valid until their next refresh; the core owns names and lists of
// models. Without a service lists and texts are empty, and other functions do nothing.
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

// The functions that use the calling thread's lists of monitors and windows. On a thread without
// such a list they do nothing or return null. Combo boxes stay the caller's.
struct WindowEnumWrapper {
    void (*updateMonitorList)();
    void (*registerWindowComboBox)(HWND comboBox);
    void (*registerMonitorComboBox)(HWND comboBox);
    HWND (*getWindowHandle)(std::int32_t index);
    HMONITOR (*getMonitorHandle)(std::int32_t index);
};

namespace runtime_internal {

// Copies the table during the call. A later registration replaces it.
VORLEN_RUNTIME_API void RegisterMonitorWrapper(const MonitorWrapper& wrapper);
VORLEN_RUNTIME_API void RegisterWindowEnumWrapper(const WindowEnumWrapper& wrapper);

// The registered table; null when no table is registered, or its module has been unloaded.
VORLEN_RUNTIME_API const MonitorWrapper* GetMonitorWrapper();
VORLEN_RUNTIME_API const WindowEnumWrapper* GetWindowEnumWrapper();

} // namespace runtime_internal
} // namespace vorlen

extern "C" {

// Called by a module while it is being loaded. Names are copied. Functions are called on the
// service thread, and never after their module has been unloaded. A runtime must not call init
// while a module registers: Windows holds the loader lock then, so a thread that init starts and
// waits for could not start. A runtime must not call cleanup, also not from its callbacks, while a
// function of the module runs.
VORLEN_RUNTIME_API void Vorlen_RegisterModuleVersion(const char* name, std::int32_t major,
                                                     std::int32_t minor, std::int32_t patch);
VORLEN_RUNTIME_API void Vorlen_RegisterModuleInit(void (*init)());
VORLEN_RUNTIME_API void Vorlen_RegisterModuleCleanup(void (*cleanup)());
}
