#pragma once

#include <cstdint>
#include <string>

namespace vorlen {

// Given: the name, and the order of the members.
// One monitor as a module hands it to the core. The texts hold the low 8 bits of each UTF-16 unit.
struct VORLEN_MONITOR_INFO {
    std::string deviceName;       // display device, such as \\.\DISPLAY1
    std::string friendlyName;     // name of the monitor's model; empty when unknown
    std::string monitorId;        // serial number text; empty when unknown
    std::int32_t x = 0;           // left edge on the desktop, pixels
    std::int32_t y = 0;           // top edge on the desktop, pixels
    std::int32_t width = 0;       // pixels
    std::int32_t height = 0;      // pixels
    std::int32_t refreshRate = 0; // hertz
};

} // namespace vorlen
