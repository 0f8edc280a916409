#pragma once

#include "runtime/logger.h"

#include <optional>
#include <string>
#include <string_view>

namespace vorlen::log {

// The name that lines show. The level must be one of the six.
std::string_view nameOf(level_enum level);

// The level with exactly this name; nothing for any other text.
std::optional<level_enum> levelNamed(std::string_view name);

// All names, for a person to choose from: "trace, debug, ... or critical".
std::string levelNames();

} // namespace vorlen::log
