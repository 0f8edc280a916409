#pragma once

#include "tools/vorlen-monitor-viewer/area.h"
#include "vorlen/monitor.h"

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

// The monitors as the viewer shows them. Texts are UTF-8.
namespace vorlen::viewer {

struct ViewedMonitor {
    MonitorListItem record{};
    bool isKitModel = false;
    bool isCurrent = false; // the runtime's current monitor
};

// Whether the monitor is a kit model with a size, or a refresh rate, that the library's check
// does not accept.
bool hasFailingSize(const ViewedMonitor& monitor);
bool hasFailingRate(const ViewedMonitor& monitor);

// The shape in front of a line on the map.
enum class Mark { none, kitModel, current, failing };

struct MapLine {
    std::string text;
    Mark mark = Mark::none;

    friend bool operator==(const MapLine&, const MapLine&) = default;
};

// What the map shows on a monitor, the most important lines first: a small place has room for a
// few of them only.
std::vector<MapLine> mapLines(const ViewedMonitor& monitor);

// All fields of the monitor, one on a line.
std::string recordText(const ViewedMonitor& monitor);

// The library's list of monitors, and the one that the user has selected.
class Monitors {
public:
    // Replaces the list. The same monitor stays selected, also when it is elsewhere in the list:
    // the one with its device name, name and serial number, else with the last two, else with its
    // device name. When the list has no such monitor, the current monitor is selected, else the
    // first. Returns whether anything that is shown has changed.
    bool update(std::vector<ViewedMonitor> now);

    const std::vector<ViewedMonitor>& all() const { return monitors; }

    // Where they are on the desktop.
    std::vector<Area> areas() const;

    // Nothing when there is no monitor.
    std::optional<std::size_t> selected() const;
    const ViewedMonitor* selectedMonitor() const;

    // An index outside the list changes nothing.
    void select(std::size_t index);

    // The map as one sentence, for those who do not see it.
    std::string description() const;

private:
    std::size_t indexOf(const MonitorListItem& wanted) const;

    std::vector<ViewedMonitor> monitors;
    std::size_t selection = 0;
};

} // namespace vorlen::viewer
