#include "monitor/status/logger.h"

namespace vorlen::log {

DebugCallback vllogger::debugCallback = nullptr;

vllogger::vllogger() : initialized(true) {}
vllogger::~vllogger() = default;

void vllogger::log(level_enum level, const std::string& message, bool) {
    if (debugCallback != nullptr) {
        debugCallback(static_cast<int>(level), message.c_str());
    }
}

} // namespace vorlen::log
