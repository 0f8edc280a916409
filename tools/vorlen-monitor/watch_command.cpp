#include "tools/vorlen-monitor/watch_command.h"

#include "platform/safe_text.h"
#include "tools/vorlen-monitor/monitors_command.h"
#include "tools/vorlen-monitor/records.h"
#include "tools/vorlen-monitor/repeating_timer.h"
#include "tools/vorlen-monitor/stop_request.h"
#include "tools/vorlen-monitor/text.h"
#include "vorlen/diagnostics.h"

#include <nlohmann/json.hpp>

namespace vorlen::tool {

namespace {

// The period in which the monitors are listed. The library's list is at most 500 ms old. Window
// events arrive as messages, which end the wait before.
constexpr DWORD pollingMilliseconds = 250;

// The period in which the window list is restarted, to find changes that no event reports.
constexpr std::chrono::seconds restartPeriod{1};

struct Desktop {
    std::vector<MonitorListItem> monitors;
    std::vector<WindowRow> windows;
};

Desktop readDesktop(const Service& service) {
    return {readMonitors(service), readCapturableWindows(service)};
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

nlohmann::ordered_json lineObject(Change change, const char* kind,
                                  const nlohmann::ordered_json& record) {
    nlohmann::ordered_json line = {{"event", nameOf(change)}, {"kind", kind}};
    line.update(record);
    return line;
}

std::string jsonLine(const nlohmann::ordered_json& line) {
    return spellControlsInJson(line.dump()) + "\n";
}

std::string changeLines(const Desktop& before, const Desktop& now, WindowSource source, bool json) {
    std::string lines;
    visitChanges(
        before.monitors, now.monitors,
        [](const MonitorListItem& left, const MonitorListItem& right) {
            return monitorJson(left) == monitorJson(right);
        },
        [&](Change change, const MonitorListItem& monitor) {
            lines += changeLine(change, monitor, json);
        });
    visitChanges(
        before.windows, now.windows,
        [](const WindowRow& left, const WindowRow& right) {
            return left.title == right.title && left.className == right.className;
        },
        [&](Change change, const WindowRow& window) {
            lines += changeLine(change, window, source, json);
        });
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
    auto* const restartWindowList =
        service.function<decltype(monitor_internal::restartWindowList)>("restartWindowList");
    const Clock::time_point start = Clock::now();
    const Clock::time_point end =
        options.duration ? start + *options.duration : Clock::time_point::max();
    RepeatingTimer restart(start, restartPeriod);
    Desktop before;
    const auto report = [&](WindowSource source) {
        Desktop now = readDesktop(service);
        const std::string lines = changeLines(before, now, source, options.json);
        if (!lines.empty()) {
            output.write(lines);
        }
        before = std::move(now);
    };
    do {
        dispatchMessages();
        report(WindowSource::events);
        if (!options.eventsOnly && restart.hasExpired(Clock::now())) {
            restartWindowList();
            report(WindowSource::restart);
        }
        if (Clock::now() >= end) {
            return;
        }
    } while (!stop.waitForRequestOrMessage(pollingMilliseconds));
}

std::string changeLine(Change change, const MonitorListItem& monitor, bool json) {
    if (json) {
        return jsonLine(lineObject(change, "monitor", monitorJson(monitor)));
    }
    return std::string(nameOf(change)) + " monitor " + hexadecimal(monitor.handle) + " " +
           spellControls(fieldText(monitor.deviceName) + " \"" + fieldText(monitor.friendlyName) +
                         "\" \"" + fieldText(monitor.monitorId) + "\"") +
           " " + std::to_string(monitor.width) + " x " + std::to_string(monitor.height) + " at " +
           std::to_string(monitor.x) + ", " + std::to_string(monitor.y) + ", " +
           std::to_string(monitor.refreshRate) + " Hz\n";
}

std::string changeLine(Change change, const WindowRow& window, WindowSource source, bool json) {
    const bool unreported = source == WindowSource::restart;
    if (json) {
        auto line = lineObject(change, "window", windowJson(window));
        line["unreported"] = unreported;
        return jsonLine(line);
    }
    return std::string(nameOf(change)) + " window " + hexadecimal(window.handle) + " " +
           spellControls(window.className + " \"" + window.title + "\"") +
           (unreported ? " (unreported)" : "") + "\n";
}

} // namespace vorlen::tool
