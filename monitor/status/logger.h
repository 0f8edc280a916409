#pragma once

#include "runtime/host.h"

#include <cstdint>
#include <string>

namespace vorlen::log {

enum class level_enum : std::int32_t {
    trace = 0,
    debug = 1,
    info = 2,
    warn = 3,
    error = 4,
    critical = 5,
};

// Called by the runtime for each line with the level's number and the text.
using DebugCallback = void (*)(int level, const char* message);

// A module's view of the runtime's logger, which owns sinks, format and threshold. Each image has
// one object, reached through instance().
class vllogger {
public:
    vllogger(const vllogger&) = delete;
    vllogger& operator=(const vllogger&) = delete;

    // Made on the first call, which may come from several threads at once; lives until the image is
    // unloaded.
    static vllogger* instance() {
        static vllogger logger;
        return &logger;
    }

    bool isInitialized() const { return initialized; }

    // Writes one line. The message is complete and UTF-8, without a line end; any level may be
    // given at any time, the runtime decides what is written where. The flag is the runtime's own;
    // modules pass false. Any thread.
    VORLEN_RUNTIME_API void log(level_enum level, const std::string& message, bool flag);

    void trace(const std::string& message) { log(level_enum::trace, message, false); }
    void debug(const std::string& message) { log(level_enum::debug, message, false); }
    void info(const std::string& message) { log(level_enum::info, message, false); }
    void warn(const std::string& message) { log(level_enum::warn, message, false); }
    void error(const std::string& message) { log(level_enum::error, message, false); }
    void critical(const std::string& message) { log(level_enum::critical, message, false); }

    // Replaces the callback; null removes it. A plain store: not while another thread logs.
    static void RegisterDebugCallback(DebugCallback callback) { debugCallback = callback; }

private:
    VORLEN_RUNTIME_API vllogger();
    VORLEN_RUNTIME_API ~vllogger();

    bool initialized;
    VORLEN_RUNTIME_API static DebugCallback debugCallback;
};

} // namespace vorlen::log
