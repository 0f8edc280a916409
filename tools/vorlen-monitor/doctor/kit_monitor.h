#pragma once

#include "snapshot/reading.h"
#include "tools/vorlen-monitor/doctor/examination.h"
#include "vorlen/monitor.h"

#include <cstdint>
#include <optional>
#include <string>

namespace vorlen::tool {

// In pixels.
struct Size {
    std::int64_t width = 0;
    std::int64_t height = 0;

    friend bool operator==(const Size&, const Size&) = default;
};

// What the library's check requires.
constexpr Size requiredSize{3840, 2160};
constexpr std::int32_t requiredHertz = 59;

// The monitor that the library's check judged, with what the reading says about it. Pointers are
// null for what the reading does not have; they point into the examination.
struct KitMonitor {
    MonitorListItem item;
    const snapshot::Monitor* monitor;
    const snapshot::DisplayPath* path; // the one that gives the library the monitor's name
    const snapshot::PathMode* source;
    const snapshot::PathMode* target;
};

// Nothing when the check judged no monitor, or a monitor that is no longer listed.
std::optional<KitMonitor> kitMonitorOf(const Examination& examination);

// As findings name it.
std::string deviceNameOf(const KitMonitor& kit);

// Its device name and name, to begin a sentence with: The kit monitor \\.\DISPLAY1 "NAME".
std::string described(const KitMonitor& kit);

// How often Windows rotates the picture by 90 degrees: 0 to 3.
std::uint32_t quarterTurns(const KitMonitor& kit);

// The size of the picture that Windows draws, as if it were not rotated; nothing when unknown.
std::optional<Size> pictureSize(const KitMonitor& kit);

// The size of the picture that the graphics card sends; nothing when unknown.
std::optional<Size> signalSize(const KitMonitor& kit);

// The size of the panel: that of the mode that the monitor prefers; nothing when unknown, or when
// that mode does not have the required size, which the panel of every kit monitor has.
std::optional<Size> panelSize(const KitMonitor& kit);

bool isLargeEnough(const Size& size);

// The best mode that the monitor offers over its present connection: one that the check accepts if
// there is any, then by the panel's size, the number of pixels and the refresh rate. Null when
// Windows lists no mode.
const snapshot::DisplayMode* bestOfferedMode(const KitMonitor& kit);

// Whether the check accepts the mode, without rotation.
bool passes(const snapshot::DisplayMode& mode);

} // namespace vorlen::tool
