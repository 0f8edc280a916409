#pragma once

#include "runtime/logger.h"

#include <string>
#include <string_view>

namespace vorlen::log {

// The name of a level in lines and settings. The level must be one of the six.
std::string_view nameOf(level_enum level);

constexpr level_enum defaultThreshold = level_enum::warn;

struct LogSettings {
    level_enum threshold;  // lines below it do not reach standard error
    std::wstring fileName; // file that gets every line; empty for none
};

// What VORLEN_LOG_LEVEL and VORLEN_LOG_FILE say; an empty variable counts as not set. A level that
// is none leaves the default, with a line on standard error.
LogSettings logSettingsFromEnvironment();

} // namespace vorlen::log
