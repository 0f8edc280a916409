#pragma once

#include "vorlen/monitor.h"

#include <windows.h>

#include <optional>
#include <string>
#include <vector>

// One active display path: a source (a part of the desktop) and its target (a monitor).
struct DisplayPathInfo {
    std::wstring gdiDeviceName; // of the source, such as \\.\DISPLAY1
    std::wstring friendlyName;  // of the target
    std::wstring devicePath;    // device interface path of the target
};

// Every active display path whose source name and target name can be read, in the system's order.
// Empty when the display configuration cannot be read: after sleep, in a remote session, or when
// it changes during the call. Any thread.
std::vector<DisplayPathInfo> getActiveDisplayPaths();

// The first active display path whose source has this device name; nothing when there is no such
// path. friendlyName and devicePath are empty when the target's names cannot be read. Any thread.
std::optional<DisplayPathInfo> findDisplayPath(const std::wstring& deviceName);

// The friendly name and the device interface path of a monitor. Empty when no active display path
// has the monitor's device name, and when the handle is not, or no longer, a monitor's. Each call
// reads the display configuration. Any thread.
VORLEN_MONITOR_API std::wstring getMonitorName(HMONITOR monitor);
VORLEN_MONITOR_API std::wstring getMonitorPath(HMONITOR monitor);
