#include "runtime/log_settings.h"

#include "platform/environment.h"
#include "platform/safe_text.h"
#include "platform/text.h"
#include "runtime/diagnostics.h"
#include "runtime/log_level.h"

namespace vorlen::log {

namespace {

level_enum thresholdNamed(const std::string& name) {
    if (name.empty()) {
        return defaultThreshold;
    }
    if (const auto level = levelNamed(name)) {
        return *level;
    }
    complain("VORLEN_LOG_LEVEL is \"" + spellControls(name) + "\", which is no level, and " +
             std::string(nameOf(defaultThreshold)) + " is used instead: set it to " + levelNames());
    return defaultThreshold;
}

} // namespace

LogSettings logSettingsFromEnvironment() {
    return {thresholdNamed(toUtf8Lossy(environmentText(L"VORLEN_LOG_LEVEL"))),
            environmentText(L"VORLEN_LOG_FILE")};
}

} // namespace vorlen::log
