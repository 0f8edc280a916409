#include "tools/vorlen-monitor/watch_command.h"

#include "tools/vorlen-monitor/monitors_command.h"
#include "tools/vorlen-monitor/records.h"
#include "tools/vorlen-monitor/stop_request.h"
#include "tools/vorlen-monitor/text.h"

#include <nlohmann/json.hpp>

namespace vorlen::tool {

namespace {

// How long a change of the monitors may stay unseen; the library's own list is never older than
// half a second. Windows are told of by messages.
constexpr DWORD pollingMilliseconds = 250;

struct Desktop {
    std::vector<MonitorListItem> monitors;
    std::vector<WindowRow> windows;
};

Desktop readDesktop(const Service& service) {
    return {readMonitors(service), readOfferedWindows(service)};
}

const char* nameOf(Change change) {
    switch (change) {
    case Change::appeared:
        return "appeared";
    case Change::changed:
        return "changed";
    case Change::gone:
        break;
    }
    return "gone";
}

std::string jsonLine(Change change, const char* kind, const nlohmann::ordered_json& record) {
    nlohmann::ordered_json line = {{"event", nameOf(change)}, {"kind", kind}};
    line.update(record);
    return spellControlsInJson(line.dump()) + "\n";
}

std::string changeLines(const Desktop& before, const Desktop& now, bool json) {
    std::string lines;
    const auto add = [&](Change change, const auto& record) {
        lines += changeLine(change, record, json);
    };
    visitChanges(
        before.monitors, now.monitors,
        [](const MonitorListItem& left, const MonitorListItem& right) {
            return monitorJson(left) == monitorJson(right);
        },
        add);
    visitChanges(
        before.windows, now.windows,
        [](const WindowRow& left, const WindowRow& right) {
            return left.title == right.title && left.className == right.className;
        },
        add);
    return lines;
}

void dispatchMessages() {
    MSG message;
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE) != FALSE) {
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
}

} // namespace

void watch(const Service& service, const WatchOptions& options, const Output& output) {
    using Clock = std::chrono::steady_clock;
    const StopRequest stop;
    const Clock::time_point end =
        options.duration ? Clock::now() + *options.duration : Clock::time_point::max();
    Desktop before;
    do {
        dispatchMessages();
        Desktop now = readDesktop(service);
        if (const std::string lines = changeLines(before, now, options.json); !lines.empty()) {
            output.write(lines);
        }
        before = std::move(now);
        if (Clock::now() >= end) {
            return;
        }
    } while (!stop.waitForRequestOrMessage(pollingMilliseconds));
}

std::string changeLine(Change change, const MonitorListItem& monitor, bool json) {
    if (json) {
        return jsonLine(change, "monitor", monitorJson(monitor));
    }
    return std::string(nameOf(change)) + " monitor " + hexadecimal(monitor.handle) + " " +
           spellControls(fieldText(monitor.deviceName) + " \"" + fieldText(monitor.friendlyName) +
                         "\" \"" + fieldText(monitor.monitorId) + "\"") +
           " " + std::to_string(monitor.width) + " x " + std::to_string(monitor.height) + " at " +
           std::to_string(monitor.x) + ", " + std::to_string(monitor.y) + ", " +
           std::to_string(monitor.refreshRate) + " Hz\n";
}

std::string changeLine(Change change, const WindowRow& window, bool json) {
    if (json) {
        return jsonLine(change, "window", windowJson(window));
    }
    return std::string(nameOf(change)) + " window " + hexadecimal(window.handle) + " " +
           spellControls(window.className + " \"" + window.title + "\"") + "\n";
}

} // namespace vorlen::tool
