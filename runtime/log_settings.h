#pragma once

#include "runtime/logger.h"

#include <string>
#include <string_view>

namespace vorlen::log {

// The name of a level in log lines and settings. The level must be one of the six.
std::string_view nameOf(level_enum level);

constexpr level_enum defaultThreshold = level_enum::warn;

struct LogSettings {
    level_enum threshold;  // lines below this level are not written to standard error
    std::wstring fileName; // file to which all lines are appended; empty for no file
};

// The settings in the environment variables VORLEN_LOG_LEVEL and VORLEN_LOG_FILE. An empty
// variable counts as not set. An unknown level name is reported on standard error, and the default
// is used.
LogSettings logSettingsFromEnvironment();

} // namespace vorlen::log
