#include "tools/vorlen-monitor-viewer/texts.h"

#include "platform/safe_text.h"
#include "tools/vorlen-monitor/doctor/report.h"
#include "tools/vorlen-monitor/status_command.h"
#include "tools/vorlen-monitor/text.h"
#include "vorlen/status.h"

#include <algorithm>

namespace vorlen::viewer {

namespace {

std::string findingText(const tool::Finding& finding) {
    return std::string(tool::nameOf(finding.severity)) + " " + finding.code + "\n" +
           spellControls(finding.seen) + "\nMeaning: " + finding.meaning +
           "\nAdvice: " + spellControls(finding.advice) + "\n";
}

// Empty when no finding belongs.
template <typename Belongs>
std::string section(const char* heading, const std::vector<tool::Finding>& findings,
                    Belongs belongs) {
    std::string text;
    for (const tool::Finding& finding : findings) {
        if (belongs(finding)) {
            text += "\n" + findingText(finding);
        }
    }
    return text.empty() ? text : "\n" + std::string(heading) + "\n" + text;
}

} // namespace

std::string detailsText(const ViewedMonitor* monitor, const std::vector<tool::Finding>* findings) {
    std::string text =
        monitor != nullptr ? recordText(*monitor) : std::string("The desktop has no monitor.\n");
    if (findings == nullptr) {
        return text;
    }
    if (monitor != nullptr) {
        const std::string deviceName = tool::fieldText(monitor->record.deviceName);
        const std::string about =
            section("Findings about this monitor", *findings, [&](const tool::Finding& finding) {
                return std::ranges::count(finding.monitors, deviceName) != 0;
            });
        text += about.empty() ? "\nNo findings about this monitor.\n" : about;
    }
    return text + section("Findings about the desktop", *findings,
                          [](const tool::Finding& finding) { return finding.monitors.empty(); });
}

std::string statusText(std::int32_t code) {
    const char* const advice = statusMessage(code);
    const std::string line = tool::statusLine(code) + "\n";
    return advice != nullptr && *advice != '\0' ? line + advice + "\n" : line;
}

} // namespace vorlen::viewer
