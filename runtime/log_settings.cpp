#include "runtime/log_settings.h"

#include "platform/environment.h"
#include "platform/safe_text.h"
#include "platform/text.h"
#include "runtime/complain.h"

#include <array>
#include <cstddef>
#include <optional>

namespace vorlen::log {

namespace {

// In the order of the levels' values.
constexpr std::array<std::string_view, 6> names{"trace", "debug", "info",
                                                "warn",  "error", "critical"};

std::optional<level_enum> levelNamed(std::string_view name) {
    for (std::size_t i = 0; i < names.size(); ++i) {
        if (names[i] == name) {
            return static_cast<level_enum>(i);
        }
    }
    return std::nullopt;
}

// The names of all levels, for a message: "trace, debug, ... or critical".
std::string levelNames() {
    std::string list(names.front());
    for (std::size_t i = 1; i < names.size(); ++i) {
        list += i + 1 < names.size() ? ", " : " or ";
        list += names[i];
    }
    return list;
}

level_enum thresholdNamed(const std::string& name) {
    if (name.empty()) {
        return defaultThreshold;
    }
    if (const auto level = levelNamed(name)) {
        return *level;
    }
    complain("VORLEN_LOG_LEVEL is \"" + spellControls(name) + "\", which is not a level, and " +
             std::string(nameOf(defaultThreshold)) + " is used instead: set it to " + levelNames());
    return defaultThreshold;
}

} // namespace

std::string_view nameOf(level_enum level) {
    return names[static_cast<std::size_t>(level)];
}

LogSettings logSettingsFromEnvironment() {
    return {thresholdNamed(toUtf8Lossy(environmentText(L"VORLEN_LOG_LEVEL"))),
            environmentText(L"VORLEN_LOG_FILE")};
}

} // namespace vorlen::log
