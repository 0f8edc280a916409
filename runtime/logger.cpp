#include "monitor/status/logger.h"

#include "runtime/log_output.h"

namespace vorlen::log {

DebugCallback vllogger::debugCallback = nullptr;

// The sinks belong to the process, not to the image whose object this is.
vllogger::vllogger() : initialized(false) {
    static_cast<void>(logOutput());
    initialized = true;
}

vllogger::~vllogger() = default;

void vllogger::log(level_enum level, const std::string& message, bool) {
    logOutput().log(level, message, debugCallback);
}

} // namespace vorlen::log
