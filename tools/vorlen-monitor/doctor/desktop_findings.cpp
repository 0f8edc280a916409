#include "platform/text.h"
#include "tools/vorlen-monitor/doctor/findings.h"
#include "tools/vorlen-monitor/doctor/kit_monitor.h"
#include "tools/vorlen-monitor/doctor/words.h"
#include "tools/vorlen-monitor/text.h"

#include <windows.h>

#include <algorithm>
#include <functional>
#include <map>

namespace vorlen::tool {

namespace {

using TextOfMonitor = std::function<std::wstring(const MonitorListItem&)>;

struct Group {
    std::wstring text;
    std::vector<std::string> deviceNames;
    bool withKitMonitor = false;
};

// The monitors of the library's list that have a text in common, which is not empty.
std::vector<Group> groupsWithOneText(const Examination& examination,
                                     const TextOfMonitor& textOfMonitor) {
    std::map<std::wstring, Group> groups;
    for (const MonitorListItem& monitor : examination.monitors) {
        const std::wstring text = textOfMonitor(monitor);
        Group& group = groups[text];
        group.text = text;
        group.deviceNames.push_back(fieldText(monitor.deviceName));
        group.withKitMonitor |=
            isJudged(examination, reinterpret_cast<std::uintptr_t>(monitor.handle));
    }
    std::vector<Group> result;
    for (auto& [text, group] : groups) {
        if (!text.empty() && group.deviceNames.size() > 1) {
            result.push_back(std::move(group));
        }
    }
    return result;
}

std::string awarenessText(std::int32_t awareness) {
    switch (awareness) {
    case DPI_AWARENESS_UNAWARE:
        return "not DPI aware";
    case DPI_AWARENESS_SYSTEM_AWARE:
        return "aware of the system's DPI only";
    case DPI_AWARENESS_PER_MONITOR_AWARE:
        return "aware of each monitor's DPI";
    default:
        return "of unknown DPI awareness";
    }
}

// The last step when it failed: no further steps are made then.
const snapshot::WmiStep* failedStep(const snapshot::Wmi& wmi) {
    return !wmi.steps.empty() && FAILED(wmi.steps.back().result) ? &wmi.steps.back() : nullptr;
}

} // namespace

std::vector<Finding> remoteSession(const Examination& examination) {
    if (!examination.reading.process.remoteSession) {
        return {};
    }
    return {{Severity::warning, "The program runs in a remote session.",
             "Windows reports monitors of the remote session, which need not be those of the "
             "computer. Their names can be missing, and the picture is compressed on its way.",
             "Run the host and this command at the computer itself."}};
}

std::vector<Finding> scaledCoordinates(const Examination& examination) {
    std::vector<std::string> scaled;
    std::vector<std::string> deviceNames;
    for (const snapshot::Monitor& monitor : examination.reading.monitors) {
        if (!monitor.currentMode) {
            continue;
        }
        const snapshot::Rectangle& rectangle = monitor.rectangle;
        const Size coordinates{std::int64_t{rectangle.right} - rectangle.left,
                               std::int64_t{rectangle.bottom} - rectangle.top};
        const Size pixels{monitor.currentMode->mode.width, monitor.currentMode->mode.height};
        if (coordinates != Size{} && coordinates != pixels) {
            deviceNames.push_back(toUtf8Lossy(monitor.deviceName));
            scaled.push_back(deviceNames.back() + " has " + sizeText(pixels) + " pixels and " +
                             sizeText(coordinates) + " in coordinates");
        }
    }
    if (scaled.empty()) {
        return {};
    }
    return {{Severity::note,
             "This program is " + awarenessText(examination.reading.process.dpiAwareness) + ". " +
                 enumerated(scaled) + ".",
             "The library reports pixels in every program, so its answers are right. In a host "
             "whose coordinates are scaled, too, Windows enlarges the windows: its picture on the "
             "kit monitor is no 3-D picture.",
             "Use a host that is aware of each monitor's DPI, or choose 100 % for the kit monitor "
             "under Settings > System > Display > Scale.",
             deviceNames}};
}

std::vector<Finding> sameName(const Examination& examination) {
    std::vector<Finding> findings;
    for (const Group& group : groupsWithOneText(
             examination, [](const auto& monitor) { return textOf(monitor.friendlyName); })) {
        findings.push_back(
            {group.withKitMonitor ? Severity::warning : Severity::note,
             enumerated(group.deviceNames) + " are all named " + inQuotes(group.text) + ".",
             group.withKitMonitor
                 ? "The library checks the first of them only. A host that chooses a monitor by "
                   "its name may show its picture on another one."
                 : "A host that chooses a monitor by its name may take another one.",
             "Distinguish the monitors by device name or serial number. If only one is meant to "
             "show 3-D pictures, make it the first, or switch the others off.",
             group.deviceNames});
    }
    return findings;
}

std::vector<Finding> sameSerialNumber(const Examination& examination) {
    std::vector<Finding> findings;
    for (const Group& group : groupsWithOneText(
             examination, [](const auto& monitor) { return textOf(monitor.monitorId); })) {
        findings.push_back(
            {group.withKitMonitor ? Severity::warning : Severity::note,
             enumerated(group.deviceNames) + " all have the serial number " + inQuotes(group.text) +
                 ".",
             "A serial number cannot tell these monitors apart.",
             "Distinguish the monitors by device name. Report the number to the maker of the "
             "monitors.",
             group.deviceNames});
    }
    return findings;
}

std::vector<Finding> wmiFailed(const Examination& examination) {
    const snapshot::WmiStep* const step = failedStep(examination.reading.wmi);
    if (step == nullptr) {
        return {};
    }
    const std::size_t reported = examination.reading.wmi.objects.size();
    return {{Severity::note,
             "WMI: " + step->name + " returned " + resultText(step->result) +
                 (reported == 0 ? "" : ", after " + std::to_string(reported) + " monitors") + ".",
             "The library has no serial numbers of monitors that WMI did not report. The check of "
             "the kit monitor does not need them.",
             "Check that the service Windows Management Instrumentation runs and that the user may "
             "use it. Then start the host again: the library asks once for each monitor."}};
}

std::vector<Finding> missingSerialNumber(const Examination& examination) {
    const std::optional<KitMonitor> kit = kitMonitorOf(examination);
    const snapshot::Wmi& wmi = examination.reading.wmi;
    if (!kit || !textOf(kit->item.monitorId).empty() || failedStep(wmi) != nullptr) {
        return {};
    }
    return {{Severity::note,
             described(*kit) + " has no serial number. WMI reported " +
                 std::to_string(wmi.objects.size()) + " monitors.",
             "The check of the kit monitor does not need the serial number. A host cannot "
             "recognise the same monitor by it.",
             "Nothing, unless a host needs the number. Then connect the monitor directly, without "
             "switch, dock or adapter, and start the host again.",
             {deviceNameOf(*kit)}}};
}

} // namespace vorlen::tool
