#pragma once

#include "platform/locks.h"
#include "runtime/callback_caller.h"
#include "runtime/log_file.h"
#include "runtime/log_settings.h"

#include <string>

namespace vorlen::log {

// The outputs of the log, for every image of the process: lines from the threshold on go to
// standard error, all lines go to the file. Any thread.
class LogOutput {
public:
    explicit LogOutput(const LogSettings& settings);

    // Writes one line. Lines of several threads are written whole, and in the same order in both
    // outputs. Calls the callback after the line has been written.
    void log(level_enum level, const std::string& message, DebugCallback callback);

private:
    void write(level_enum level, const std::string& message);

    level_enum threshold;
    LogFile file;
    CriticalSection writing;
    CallbackCaller callbacks;
};

// The only object, created with the settings of the environment on the first call. It is not
// destroyed with the static objects: images may log until the process ends, even after the static
// objects of this image have been destroyed.
LogOutput& logOutput();

// Destroys the object. Called when this image is being unloaded: no other image uses it then.
void closeLogOutput();

} // namespace vorlen::log
