#pragma once

#include "runtime/logger.h"
#include "simulation/current.h"
#include "simulation/import_redirect.h"
#include "simulation/journal.h"
#include "tests/support/simulation.h"

#include <windows.h>

#include <ostream>
#include <string>
#include <vector>

namespace tests {

// One call of the runtime's logger with its plain arguments.
struct LogLine {
    int level;
    std::string text;
    bool flag = false;

    friend bool operator==(const LogLine&, const LogLine&) = default;
    friend std::ostream& operator<<(std::ostream& out, const LogLine& line);
};

// Keeps the lines that an image logs from the runtime, and notes each call as "vllogger::log" in
// the journal. A call is made to fail with the journal's at(): the action throws, and no line is
// kept.
class LogRecorder : private Current<LogRecorder> {
public:
    LogRecorder(HMODULE image, Journal& calls);

    // The lines so far, in order.
    std::vector<LogLine> lines;

    // The object that was asked to write each of them.
    std::vector<const vorlen::log::vllogger*> loggers;

private:
    friend class Current<LogRecorder>;
    static void log(vorlen::log::vllogger* logger, vorlen::log::level_enum level,
                    const std::string& message, bool flag);

    Journal& journal;
    ImportRedirect redirect;
};

} // namespace tests
