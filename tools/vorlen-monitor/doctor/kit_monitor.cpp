#include "tools/vorlen-monitor/doctor/kit_monitor.h"

#include "platform/text.h"
#include "tools/vorlen-monitor/doctor/words.h"
#include "tools/vorlen-monitor/text.h"

#include <windows.h>

#include <algorithm>
#include <tuple>

namespace vorlen::tool {

namespace {

Size turned(const Size& size, std::uint32_t turns) {
    return turns % 2 == 0 ? size : Size{size.height, size.width};
}

// Of a mode as Windows lists it: with the orientation that it has then.
Size uprightSize(const snapshot::DisplayMode& mode) {
    return turned({mode.width, mode.height}, static_cast<std::uint32_t>(mode.orientation));
}

// The mode of the path at the index, when it is of the wanted type.
const snapshot::PathMode* modeAt(const snapshot::Reading& reading, std::uint32_t index,
                                 std::uint32_t infoType) {
    const auto& modes = reading.displayConfiguration.modes;
    return index < modes.size() && modes[index].infoType == infoType ? &modes[index] : nullptr;
}

// As in the library: the first path of the device name whose name requests succeeded.
const snapshot::DisplayPath* pathOf(const snapshot::Reading& reading,
                                    const std::wstring& deviceName) {
    const auto& paths = reading.displayConfiguration.paths;
    const auto found = std::ranges::find_if(paths, [&](const snapshot::DisplayPath& path) {
        return path.sourceName.gdiDeviceName == deviceName &&
               path.sourceName.status == ERROR_SUCCESS && path.targetName.status == ERROR_SUCCESS;
    });
    return found != paths.end() ? &*found : nullptr;
}

} // namespace

std::optional<KitMonitor> kitMonitorOf(const Examination& examination) {
    if (!examination.status.monitor) {
        return std::nullopt;
    }
    const snapshot::Reading& reading = examination.reading;
    KitMonitor kit{*examination.status.monitor, nullptr, nullptr, nullptr, nullptr};
    const auto monitor =
        std::ranges::find_if(reading.monitors, [&](const snapshot::Monitor& candidate) {
            return isJudged(examination, candidate.handle);
        });
    if (monitor != reading.monitors.end()) {
        kit.monitor = &*monitor;
    }
    kit.path = pathOf(reading, textOf(kit.item.deviceName));
    if (kit.path != nullptr) {
        kit.source =
            modeAt(reading, kit.path->sourceModeIndex, DISPLAYCONFIG_MODE_INFO_TYPE_SOURCE);
        kit.target =
            modeAt(reading, kit.path->targetModeIndex, DISPLAYCONFIG_MODE_INFO_TYPE_TARGET);
    }
    return kit;
}

std::string deviceNameOf(const KitMonitor& kit) {
    return fieldText(kit.item.deviceName);
}

std::string described(const KitMonitor& kit) {
    return "The kit monitor " + deviceNameOf(kit) + " " + inQuotes(textOf(kit.item.friendlyName));
}

std::uint32_t quarterTurns(const KitMonitor& kit) {
    if (kit.path != nullptr && kit.path->rotation > DISPLAYCONFIG_ROTATION_IDENTITY &&
        kit.path->rotation <= DISPLAYCONFIG_ROTATION_ROTATE270) {
        return kit.path->rotation - DISPLAYCONFIG_ROTATION_IDENTITY;
    }
    if (kit.monitor != nullptr && kit.monitor->currentMode) {
        return static_cast<std::uint32_t>(kit.monitor->currentMode->mode.orientation) % 4;
    }
    return 0;
}

std::optional<Size> pictureSize(const KitMonitor& kit) {
    if (kit.source != nullptr && kit.source->width != 0) {
        return turned({kit.source->width, kit.source->height}, quarterTurns(kit));
    }
    if (kit.monitor != nullptr && kit.monitor->currentMode) {
        const snapshot::DisplayMode& mode = kit.monitor->currentMode->mode;
        return turned({mode.width, mode.height}, quarterTurns(kit));
    }
    return std::nullopt;
}

std::optional<Size> signalSize(const KitMonitor& kit) {
    if (kit.target == nullptr || kit.target->activeWidth == 0) {
        return std::nullopt;
    }
    return Size{kit.target->activeWidth, kit.target->activeHeight};
}

std::optional<Size> panelSize(const KitMonitor& kit) {
    if (kit.path == nullptr || kit.path->preferredMode.status != ERROR_SUCCESS) {
        return std::nullopt;
    }
    const Size size{kit.path->preferredMode.width, kit.path->preferredMode.height};
    return isLargeEnough(size) ? std::optional(size) : std::nullopt;
}

bool isLargeEnough(const Size& size) {
    return size.width >= requiredSize.width && size.height >= requiredSize.height;
}

const snapshot::DisplayMode* bestOfferedMode(const KitMonitor& kit) {
    if (kit.monitor == nullptr || kit.monitor->offeredModes.empty()) {
        return nullptr;
    }
    const auto rank = [panel = panelSize(kit)](const snapshot::DisplayMode& mode) {
        const Size size = uprightSize(mode);
        return std::tuple(passes(mode), size == panel, size.width * size.height, !mode.interlaced,
                          mode.frequency);
    };
    return &*std::ranges::max_element(kit.monitor->offeredModes, {}, rank);
}

bool passes(const snapshot::DisplayMode& mode) {
    return isLargeEnough(uprightSize(mode)) && mode.frequency >= requiredHertz && !mode.interlaced;
}

} // namespace vorlen::tool
