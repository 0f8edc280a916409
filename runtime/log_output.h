#pragma once

#include "platform/locks.h"
#include "runtime/callback_caller.h"
#include "runtime/log_file.h"
#include "runtime/log_settings.h"

#include <string>

namespace vorlen::log {

// Where lines go, for every image of the process: standard error from the threshold on, the file
// always. Any thread.
class LogOutput {
public:
    explicit LogOutput(const LogSettings& settings);

    // Lines of several threads come out whole and in the same order at both places. The callback is
    // called when its line has been written.
    void log(level_enum level, const std::string& message, DebugCallback callback);

private:
    void write(level_enum level, const std::string& message);

    level_enum threshold;
    LogFile file;
    CriticalSection writing;
    CallbackCaller callbacks;
};

// The process-wide object, made from the environment on the first call. It outlives every static
// object: images may log until the process ends, also after this one's exit handlers have run.
LogOutput& logOutput();

// Releases it when nobody can log any more, since this image is being unloaded.
void closeLogOutput();

} // namespace vorlen::log
