#pragma once

#include <windows.h>

#include <cstdint>
#include <string>

// One attached monitor, as read by EnumerateAllMonitors or getMonitorBasicInfo.
struct MonitorInfo {
    MonitorInfo() = default;

    // An entry such as "All Displays", which is not one monitor. The name becomes the device name
    // and the friendly name.
    MonitorInfo(HMONITOR monitor, const std::wstring& name)
        : hMonitor(monitor), deviceName(name), friendlyName(name) {}

    HMONITOR hMonitor = nullptr;  // borrowed from the system; null in the "All Displays" entry
    std::wstring deviceName;      // display device, such as \\.\DISPLAY1
    std::wstring friendlyName;    // name of the monitor's model; empty without a display path
    std::wstring devicePath;      // device interface path; empty without a display path
    std::wstring monitorId;       // serial number text of the monitor; empty when unknown
    std::wstring reservedText;    // Given: never written or read
    std::int32_t x = 0;           // left edge, pixels, desktop coordinates
    std::int32_t y = 0;           // top edge, pixels, desktop coordinates
    std::int32_t width = 0;       // pixels
    std::int32_t height = 0;      // pixels
    std::int32_t refreshRate = 0; // hertz
};
