#include "tools/vorlen-monitor-viewer/monitors.h"

#include "platform/safe_text.h"
#include "tools/vorlen-monitor/doctor/kit_monitor.h"
#include "tools/vorlen-monitor/doctor/words.h"
#include "tools/vorlen-monitor/records.h"
#include "tools/vorlen-monitor/text.h"

#include <algorithm>

namespace vorlen::viewer {

namespace {

using tool::fieldText;

std::string shown(const VLChar16 (&field)[VORLEN_MONITOR_TEXT_UNITS]) {
    return spellControls(fieldText(field));
}

std::string orNone(const std::string& text) {
    return text.empty() ? "none" : text;
}

std::string sizeOf(const MonitorListItem& record) {
    return tool::sizeText({record.width, record.height});
}

std::string rateOf(const MonitorListItem& record) {
    return std::to_string(record.refreshRate) + " Hz";
}

bool isSame(const MonitorListItem& left, const MonitorListItem& right) {
    return left.handle == right.handle &&
           fieldText(left.deviceName) == fieldText(right.deviceName) &&
           fieldText(left.friendlyName) == fieldText(right.friendlyName) &&
           fieldText(left.monitorId) == fieldText(right.monitorId) && left.x == right.x &&
           left.y == right.y && left.width == right.width && left.height == right.height &&
           left.refreshRate == right.refreshRate;
}

bool isSame(const ViewedMonitor& left, const ViewedMonitor& right) {
    return isSame(left.record, right.record) && left.isKitModel == right.isKitModel &&
           left.isCurrent == right.isCurrent;
}

} // namespace

bool hasFailingSize(const ViewedMonitor& monitor) {
    return monitor.isKitModel &&
           !tool::isLargeEnough({monitor.record.width, monitor.record.height});
}

bool hasFailingRate(const ViewedMonitor& monitor) {
    return monitor.isKitModel && monitor.record.refreshRate < tool::requiredHertz;
}

std::vector<MapLine> mapLines(const ViewedMonitor& monitor) {
    const MonitorListItem& record = monitor.record;
    const std::string name = shown(record.friendlyName);
    const bool isFailing = hasFailingSize(monitor) || hasFailingRate(monitor);
    // A small place has room for this line only.
    std::vector<MapLine> lines = {
        {name.empty() ? shown(record.deviceName) : name, isFailing ? Mark::failing : Mark::none}};
    if (hasFailingSize(monitor)) {
        lines.push_back({"Resolution too low", Mark::failing});
    }
    if (hasFailingRate(monitor)) {
        lines.push_back({"Refresh rate too low", Mark::failing});
    }
    lines.push_back({sizeOf(record) + ", " + rateOf(record)});
    if (monitor.isKitModel) {
        lines.push_back({"Kit monitor", Mark::kitModel});
    }
    if (monitor.isCurrent) {
        lines.push_back({"Current monitor", Mark::current});
    }
    const std::string serialNumber = shown(record.monitorId);
    lines.push_back({serialNumber.empty() ? "No serial number" : "Serial " + serialNumber});
    if (!name.empty()) {
        lines.push_back({shown(record.deviceName)});
    }
    return lines;
}

std::string recordText(const ViewedMonitor& monitor) {
    const MonitorListItem& record = monitor.record;
    std::string text = "Device name: " + shown(record.deviceName) +
                       "\nName: " + orNone(shown(record.friendlyName)) +
                       "\nSerial number: " + orNone(shown(record.monitorId)) +
                       "\nPosition: " + std::to_string(record.x) + ", " + std::to_string(record.y) +
                       "\nSize: " + sizeOf(record) + (hasFailingSize(monitor) ? " (too low)" : "") +
                       "\nRefresh rate: " + rateOf(record) +
                       (hasFailingRate(monitor) ? " (too low)" : "") +
                       "\nHandle: " + tool::hexadecimal(record.handle) +
                       "\nKit monitor: " + (monitor.isKitModel ? "yes" : "no") +
                       "\nCurrent monitor: " + (monitor.isCurrent ? "yes" : "no") + "\n";
    return text;
}

bool Monitors::update(std::vector<ViewedMonitor> now) {
    const bool changed = !std::ranges::equal(
        monitors, now, [](const auto& left, const auto& right) { return isSame(left, right); });
    const ViewedMonitor* const before = selectedMonitor();
    const std::optional<MonitorListItem> wanted =
        before != nullptr ? std::optional(before->record) : std::nullopt;
    monitors = std::move(now);
    selection = monitors.size();
    if (wanted) {
        selection = indexOf(*wanted);
    }
    if (selection == monitors.size()) {
        const auto current = std::ranges::find(monitors, true, &ViewedMonitor::isCurrent);
        selection =
            current != monitors.end() ? static_cast<std::size_t>(current - monitors.begin()) : 0;
    }
    return changed;
}

// The number of monitors when it is not listed. The system may give the device name of one that was
// turned off to another.
std::size_t Monitors::indexOf(const MonitorListItem& wanted) const {
    const auto sameDevice = [&](const ViewedMonitor& monitor) {
        return fieldText(monitor.record.deviceName) == fieldText(wanted.deviceName);
    };
    const auto sameMonitor = [&](const ViewedMonitor& monitor) {
        return fieldText(monitor.record.friendlyName) == fieldText(wanted.friendlyName) &&
               fieldText(monitor.record.monitorId) == fieldText(wanted.monitorId);
    };
    auto found = std::ranges::find_if(monitors, [&](const ViewedMonitor& monitor) {
        return sameDevice(monitor) && sameMonitor(monitor);
    });
    if (found == monitors.end()) {
        found = std::ranges::find_if(monitors, sameMonitor);
    }
    if (found == monitors.end()) {
        found = std::ranges::find_if(monitors, sameDevice);
    }
    return static_cast<std::size_t>(found - monitors.begin());
}

std::vector<Area> Monitors::areas() const {
    std::vector<Area> areas;
    for (const ViewedMonitor& monitor : monitors) {
        const MonitorListItem& record = monitor.record;
        areas.push_back({record.x, record.y, record.width, record.height});
    }
    return areas;
}

std::optional<std::size_t> Monitors::selected() const {
    return selection < monitors.size() ? std::optional(selection) : std::nullopt;
}

const ViewedMonitor* Monitors::selectedMonitor() const {
    return selection < monitors.size() ? &monitors[selection] : nullptr;
}

void Monitors::select(std::size_t index) {
    if (index < monitors.size()) {
        selection = index;
    }
}

std::string Monitors::description() const {
    std::string text =
        std::to_string(monitors.size()) + (monitors.size() == 1 ? " monitor." : " monitors.");
    if (const ViewedMonitor* const monitor = selectedMonitor()) {
        text += " Selected: " + shown(monitor->record.deviceName);
        for (const MapLine& line : mapLines(*monitor)) {
            if (line.text != shown(monitor->record.deviceName)) {
                text += ", " + line.text;
            }
        }
        text += ".";
    }
    return text;
}

} // namespace vorlen::viewer
