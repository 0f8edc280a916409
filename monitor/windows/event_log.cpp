#include "monitor/windows/event_log.h"

#include "runtime/logger.h"

#include <comdef.h>

#include <atomic>
#include <charconv>
#include <cstdint>
#include <iterator>
#include <string>

namespace {

vorlen::log::vllogger* const logger = vorlen::log::vllogger::instance();

std::atomic<bool> seriesLogged = false;

std::string describe(const std::exception_ptr& failure) {
    try {
        std::rethrow_exception(failure);
    } catch (const std::exception& error) {
        return error.what();
    } catch (const _com_error& error) {
        char digits[8];
        const auto end = std::to_chars(std::begin(digits), std::end(digits),
                                       static_cast<std::uint32_t>(error.Error()), 16);
        return "HRESULT 0x" + std::string(digits, end.ptr);
    } catch (...) {
        return "unknown exception";
    }
}

} // namespace

void logEventFailure(const std::exception_ptr& failure) noexcept {
    // Set before the line is written: a callback of the log may cause other events to fail.
    if (seriesLogged.exchange(true)) {
        return;
    }
    try {
        logger->log(vorlen::log::level_enum::critical,
                    "A window event could not be handled: " + describe(failure), false);
    } catch (...) {
        // Memory for the log line may be exhausted, too. The next failure tries again.
        seriesLogged = false;
    }
}

void endFailureSeries() noexcept {
    seriesLogged = false;
}
