#include "tools/vorlen-monitor/doctor/findings.h"
#include "tools/vorlen-monitor/doctor/words.h"

#include <algorithm>
#include <map>
#include <string_view>

namespace vorlen::tool {

namespace {

constexpr std::size_t mostTitles = 5;

struct Explanation {
    std::string_view reason;
    const char* meaning;
    const char* advice;
};

constexpr Explanation explanations[] = {
    {"disabled", "Such a window waits for a dialog of its program.", "Close the dialog."},
    {"tool window", "Such a window is a floating palette, a part of another window.",
     "Choose the main window of the program."},
    {"cloaked",
     "Windows hides such a window: its program is suspended, or it is on another "
     "virtual desktop.",
     "Bring the window to the front of this virtual desktop."},
};

constexpr Explanation otherReason = {
    "", "The capture filter of the library excludes such a window.",
    "Look at the window in the output of vorlen-monitor windows --all."};

const Explanation& explanationOf(std::string_view reason) {
    const auto* const found = std::ranges::find(explanations, reason, &Explanation::reason);
    return found != std::end(explanations) ? *found : otherReason;
}

// A window that a user sees and could expect in the list. The last two reasons exclude windows of
// the system, which every desktop has.
bool isExpected(const snapshot::Window& window) {
    return window.visible && window.root == window.handle && !window.title.empty() &&
           window.reason != "shell window" && window.reason != "blocked";
}

// Some titles, and how many more there are.
std::string titlesOf(const std::vector<const snapshot::Window*>& windows) {
    std::vector<std::string> titles;
    for (const snapshot::Window* const window : windows) {
        if (titles.size() == mostTitles) {
            titles.push_back(std::to_string(windows.size() - mostTitles) + " more");
            break;
        }
        titles.push_back(inQuotes(window->title));
    }
    return enumerated(titles);
}

std::string countOf(const std::vector<const snapshot::Window*>& windows) {
    return windows.size() == 1 ? "1 visible window is"
                               : std::to_string(windows.size()) + " visible windows are";
}

} // namespace

std::vector<Finding> windowNotCapturable(const Examination& examination) {
    std::map<std::string, std::vector<const snapshot::Window*>> windowsOfReason;
    for (const snapshot::Window& window : examination.reading.windows) {
        if (window.reason && isExpected(window)) {
            windowsOfReason[*window.reason].push_back(&window);
        }
    }
    std::vector<Finding> findings;
    for (const auto& [reason, windows] : windowsOfReason) {
        const Explanation& explanation = explanationOf(reason);
        findings.push_back(
            {Severity::note,
             countOf(windows) + " not capturable, with the reason \"" + reason +
                 "\": " + titlesOf(windows) + ".",
             std::string(explanation.meaning) + " It cannot be shown on the kit monitor.",
             explanation.advice});
    }
    return findings;
}

std::vector<Finding> windowNotListed(const Examination& examination) {
    std::vector<const snapshot::Window*> missing;
    for (const snapshot::Window& window : examination.reading.windows) {
        const auto isWindow = [&](const void* listed) {
            return reinterpret_cast<std::uintptr_t>(listed) == window.handle;
        };
        if (!window.reason && std::ranges::none_of(examination.listedWindows, isWindow)) {
            missing.push_back(&window);
        }
    }
    if (missing.empty()) {
        return {};
    }
    return {{Severity::note,
             countOf(missing) +
                 " capturable and missing in the library's list: " + titlesOf(missing) + ".",
             "The library reads its list after the desktop was read. A window that was closed, "
             "hidden or disabled in between is missing.",
             "Repeat the command. If the window is still missing, report it with a recording."}};
}

} // namespace vorlen::tool
