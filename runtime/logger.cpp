#include "runtime/logger.h"

#include "runtime/log_output.h"

namespace vorlen::log {

namespace {

bool setUpSinks() {
    static_cast<void>(logOutput());
    return true;
}

} // namespace

DebugCallback vllogger::debugCallback = nullptr;

vllogger::vllogger() : initialized(setUpSinks()) {}

// The sinks belong to the process, not to the image whose object is destroyed here.
// NOLINTNEXTLINE(modernize-use-equals-default): a default would have to be in the header
vllogger::~vllogger() {}

// NOLINTNEXTLINE(readability-convert-member-functions-to-static): modules call it on an object
void vllogger::log(level_enum level, const std::string& message, bool) {
    logOutput().log(level, message, debugCallback);
}

} // namespace vorlen::log
