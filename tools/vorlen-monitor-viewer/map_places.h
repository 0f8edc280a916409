#pragma once

#include "tools/vorlen-monitor-viewer/area.h"

#include <cstddef>
#include <optional>
#include <vector>

// Where monitors are on a map of the desktop. Monitors are known by their index.
namespace vorlen::viewer {

// The places on a map for monitors of the desktop: to scale, as they lie to each other, as large as
// fits into the map, and in its middle. A monitor without a size is shown as large as the smallest
// other one, to the right of all others.
std::vector<Area> placesOnMap(const std::vector<Area>& monitors, const Area& map);

// The first monitor whose place has the point.
std::optional<std::size_t> monitorAt(const std::vector<Area>& places, int x, int y);

enum class Direction { left, right, up, down };

// The monitor that an arrow key leads to; the same one when none lies in that direction.
std::size_t neighbour(const std::vector<Area>& places, std::size_t from, Direction direction);

} // namespace vorlen::viewer
