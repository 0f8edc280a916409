#pragma once

#include <windows.h>

#include <cstdint>
#include <string>

// One attached monitor as the enumeration reports it.
struct MonitorInfo {
    MonitorInfo() = default;

    // An entry that stands for something else than one monitor: the name is both of its names.
    MonitorInfo(HMONITOR monitor, const std::wstring& name)
        : hMonitor(monitor), deviceName(name), friendlyName(name) {}

    HMONITOR hMonitor = nullptr;  // borrowed from the system; null in the "All Displays" entry
    std::wstring deviceName;      // display device, such as \\.\DISPLAY1
    std::wstring friendlyName;    // name of the monitor's model; empty when no path matched
    std::wstring devicePath;      // device interface path; empty when no path matched
    std::wstring monitorId;       // serial number text of the monitor; empty when unknown
    std::wstring reservedText;    // Given: filled and read by nothing
    std::int32_t x = 0;           // left edge on the desktop, pixels
    std::int32_t y = 0;           // top edge on the desktop, pixels
    std::int32_t width = 0;       // pixels
    std::int32_t height = 0;      // pixels
    std::int32_t refreshRate = 0; // hertz
};
