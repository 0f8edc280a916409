#include "tests/support/log_recorder.h"

#include "tests/support/mangled_names.h"

namespace tests {

std::ostream& operator<<(std::ostream& out, const LogLine& line) {
    return out << "level " << line.level << ", \"" << line.text << "\", " << std::boolalpha
               << line.flag;
}

// A member function takes its object as the first argument.
LogRecorder::LogRecorder(HMODULE image, Journal& calls)
    : journal(calls), redirect(image, mangled::log, addressOf(log)) {}

void LogRecorder::log(vorlen::log::vllogger* logger, vorlen::log::level_enum level,
                      const std::string& message, bool flag) {
    get().journal.enter("vllogger::log");
    get().lines.push_back({static_cast<int>(level), message, flag});
    get().loggers.push_back(logger);
}

} // namespace tests
