#pragma once

#include "tools/vorlen-monitor-viewer/area.h"
#include "tools/vorlen-monitor-viewer/monitors.h"

#include <windows.h>

#include <cstddef>
#include <optional>
#include <vector>

namespace vorlen::viewer {

struct MapPicture {
    const std::vector<ViewedMonitor>& monitors;
    const std::vector<Area>& places; // of the monitors
    std::optional<std::size_t> selected;
    bool focused = false; // the selected monitor gets the focus rectangle
    int dpi = 96;
};

// Draws the map with the font of the device context, and in the system's colours.
void drawMap(HDC context, const RECT& area, const MapPicture& picture);

} // namespace vorlen::viewer
