#pragma once

#include "vorlen/runtime.h"

#include <cstdint>
#include <string>

// For members whose body stands here: the runtime exports its own, and every other image has its
// own and imports none. Importing them would give all images the runtime's object
// (docs/platform.md).
#ifdef VORLEN_RUNTIME_BUILD
#define VORLEN_RUNTIME_INLINE VORLEN_RUNTIME_API
#else
#define VORLEN_RUNTIME_INLINE
#endif

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

// Given: the names of the class and of its members.
// A module's view of the runtime's logger, which owns sinks, format and threshold. Each image has
// one object, reached through instance(). The runtime exports every member by its name.
class vllogger {
public:
    vllogger(const vllogger&) = delete;
    vllogger& operator=(const vllogger&) = delete;

    // Made on the first call, which may come from several threads at once; lives until the image is
    // unloaded.
    VORLEN_RUNTIME_INLINE static vllogger* instance() {
        static vllogger logger;
        return &logger;
    }

    VORLEN_RUNTIME_INLINE bool isInitialized() const { return initialized; }

    // Writes one line. The message is complete and UTF-8, without a line end; any level may be
    // given at any time, the runtime decides what is written where. The flag is the runtime's own;
    // modules pass false. Any thread.
    VORLEN_RUNTIME_API void log(level_enum level, const std::string& message, bool flag);

    VORLEN_RUNTIME_INLINE void trace(const std::string& message) {
        log(level_enum::trace, message, false);
    }
    VORLEN_RUNTIME_INLINE void debug(const std::string& message) {
        log(level_enum::debug, message, false);
    }
    VORLEN_RUNTIME_INLINE void info(const std::string& message) {
        log(level_enum::info, message, false);
    }
    VORLEN_RUNTIME_INLINE void warn(const std::string& message) {
        log(level_enum::warn, message, false);
    }
    VORLEN_RUNTIME_INLINE void error(const std::string& message) {
        log(level_enum::error, message, false);
    }
    VORLEN_RUNTIME_INLINE void critical(const std::string& message) {
        log(level_enum::critical, message, false);
    }

    // Replaces the callback; null removes it. A plain store: not while another thread logs.
    VORLEN_RUNTIME_INLINE static void RegisterDebugCallback(DebugCallback callback) {
        debugCallback = callback;
    }

private:
    VORLEN_RUNTIME_API vllogger();
    VORLEN_RUNTIME_API ~vllogger();

    bool initialized;
    VORLEN_RUNTIME_API static DebugCallback debugCallback;
};

#undef VORLEN_RUNTIME_INLINE

} // namespace vorlen::log
