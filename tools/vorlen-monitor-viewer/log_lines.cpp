#include "tools/vorlen-monitor-viewer/log_lines.h"

#include "platform/safe_text.h"

#include <algorithm>
#include <array>

namespace vorlen::viewer {

namespace {

// In the order of the levels' values.
constexpr std::array<const char*, 6> levelNames = {"trace", "debug", "info",
                                                   "warn",  "error", "critical"};

} // namespace

void LogLines::add(int level, std::string_view message) {
    const int highest = static_cast<int>(levelNames.size()) - 1;
    const auto index = static_cast<std::size_t>(std::clamp(level, 0, highest));
    const std::lock_guard lock(mutex);
    lines.push_back(std::string(levelNames.at(index)) + " " + spellControls(message));
    if (lines.size() > most) {
        lines.pop_front();
    }
}

std::vector<std::string> LogLines::all() const {
    const std::lock_guard lock(mutex);
    return {lines.begin(), lines.end()};
}

} // namespace vorlen::viewer
