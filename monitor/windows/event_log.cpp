#include "monitor/windows/event_log.h"

#include "monitor/status/logger.h"

#include <comdef.h>

#include <cstdio>
#include <string>

namespace {

vorlen::log::vllogger* const logger = vorlen::log::vllogger::instance();

std::string describe(const std::exception_ptr& failure) {
    try {
        std::rethrow_exception(failure);
    } catch (const std::exception& error) {
        return error.what();
    } catch (const _com_error& error) {
        char text[32];
        std::snprintf(text, sizeof(text), "HRESULT 0x%08lX",
                      static_cast<unsigned long>(error.Error()));
        return text;
    } catch (...) {
        return "unknown exception";
    }
}

} // namespace

void logEventFailure(const std::exception_ptr& failure) noexcept {
    try {
        logger->log(vorlen::log::level_enum::error,
                    "A window event could not be handled: " + describe(failure), false);
    } catch (...) {
        // Memory for the line is exhausted as well: there is no way left to tell.
        static_cast<void>(failure);
    }
}
