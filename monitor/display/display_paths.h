#pragma once

#include "vorlen/monitor.h"

#include <windows.h>

#include <optional>
#include <string>
#include <vector>

// One active display path: a source of the desktop and the monitor that it ends at.
struct DisplayPathInfo {
    std::wstring gdiDeviceName; // of the source, such as \\.\DISPLAY1
    std::wstring friendlyName;  // of the target, the monitor
    std::wstring devicePath;    // device interface path of the target
};

// Every active display path whose two names can be read, in the system's order. Empty when the
// configuration cannot be read: after sleep, in a remote session, or because it changed meanwhile.
// Any thread.
std::vector<DisplayPathInfo> getActiveDisplayPaths();

// The first active path whose source has this device name, its target's texts empty if they cannot
// be read; nothing when no path has it. Any thread.
std::optional<DisplayPathInfo> findDisplayPath(const std::wstring& deviceName);

// Friendly name and device interface path of the monitor; empty when no active path leads to it or
// the handle is no longer that of a monitor. Each call reads the configuration anew. Any thread.
VORLEN_MONITOR_API std::wstring getMonitorName(HMONITOR monitor);
VORLEN_MONITOR_API std::wstring getMonitorPath(HMONITOR monitor);
