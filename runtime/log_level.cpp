#include "runtime/log_level.h"

#include <array>
#include <cstddef>

namespace vorlen::log {

namespace {

// In the order of the levels' numbers.
constexpr std::array<std::string_view, 6> names{"trace", "debug", "info",
                                                "warn",  "error", "critical"};

} // namespace

std::string_view nameOf(level_enum level) {
    return names[static_cast<std::size_t>(level)];
}

std::optional<level_enum> levelNamed(std::string_view name) {
    for (std::size_t i = 0; i < names.size(); ++i) {
        if (names[i] == name) {
            return static_cast<level_enum>(i);
        }
    }
    return std::nullopt;
}

std::string levelNames() {
    std::string list(names.front());
    for (std::size_t i = 1; i < names.size(); ++i) {
        list += i + 1 < names.size() ? ", " : " or ";
        list += names[i];
    }
    return list;
}

} // namespace vorlen::log
