#pragma once

#include "vorlen/runtime.h"

#include <cstdint>
#include <string>

// Marks members that are defined in this header. The runtime exports them. Every other image
// compiles its own and imports none: if it imported instance(), it would use the runtime's object
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

// Called by the runtime for each line, with the value of its level and its text.
using DebugCallback = void (*)(int level, const char* message);

// The logger of an image. The runtime owns sinks, format and threshold. Each image has one object,
// which instance() returns. The runtime exports every member function.
// Given: the names of the class and of its members.
class vllogger {
public:
    vllogger(const vllogger&) = delete;
    vllogger& operator=(const vllogger&) = delete;

    // The image's object: constructed by the first call, destroyed when the image is unloaded. Any
    // thread.
    VORLEN_RUNTIME_INLINE static vllogger* instance() {
        static vllogger logger;
        return &logger;
    }

    VORLEN_RUNTIME_INLINE bool isInitialized() const { return initialized; }

    // Writes one log line. The message is UTF-8 without a line end. The runtime decides by the
    // level where the line is written. The flag is reserved for the runtime: modules pass false.
    // Any thread.
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

    // Replaces the callback; null removes it. Not synchronised: not while another thread logs.
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
