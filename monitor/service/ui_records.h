#pragma once

#include <windows.h>

#include <cstdint>
#include <string>

namespace vorlen::ui {

// One monitor as the service keeps it.
struct MonitorInfo {
    HMONITOR handle = nullptr;    // borrowed from the system
    std::wstring deviceName;      // display device, such as \\.\DISPLAY1
    std::wstring friendlyName;    // name of the monitor's model; empty when unknown
    std::wstring monitorId;       // serial number text of the monitor; empty when unknown
    std::int32_t x = 0;           // left edge, pixels, desktop coordinates
    std::int32_t y = 0;           // top edge, pixels, desktop coordinates
    std::int32_t width = 0;       // pixels
    std::int32_t height = 0;      // pixels
    std::int32_t refreshRate = 0; // hertz
};

// One capturable window as the service keeps it.
struct WindowInfo {
    HWND hwnd = nullptr; // borrowed from the system
    std::wstring title;
    std::wstring className;
};

} // namespace vorlen::ui
