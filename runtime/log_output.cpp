#include "runtime/log_output.h"

#include "platform/file.h"
#include "platform/safe_text.h"

#include <windows.h>

#include <algorithm>
#include <cstdio>
#include <mutex>
#include <string>

namespace vorlen::log {

namespace {

LogOutput* madeOutput = nullptr;

// The time in UTC with milliseconds, in the format of ISO 8601.
std::string timeNow() {
    SYSTEMTIME now{};
    GetSystemTime(&now);
    char text[64];
    // Of the system's C library: std::snprintf of GCC's libraries adds 24 KB to the image.
    static_cast<void>(_snprintf_s(text, _TRUNCATE, "%04u-%02u-%02uT%02u:%02u:%02u.%03uZ", now.wYear,
                                  now.wMonth, now.wDay, now.wHour, now.wMinute, now.wSecond,
                                  now.wMilliseconds));
    return text;
}

} // namespace

LogOutput::LogOutput(const LogSettings& settings)
    : threshold(settings.threshold), file(settings.fileName) {}

void LogOutput::log(level_enum level, const std::string& message, DebugCallback callback) {
    write(level, message);
    // Outside the lock: a callback may run long, or log.
    callbacks.call(callback, level, message);
}

void LogOutput::write(level_enum level, const std::string& message) {
    // A caller's cast can make a number outside the levels: the nearest level is used.
    level = std::clamp(level, level_enum::trace, level_enum::critical);
    const std::string line = std::string(nameOf(level)) + ' ' + spellControls(message) + '\n';
    const std::lock_guard lock(writing);
    if (level >= threshold) {
        // A failure to write to standard error cannot be reported anywhere.
        static_cast<void>(writeAll(GetStdHandle(STD_ERROR_HANDLE), line));
    }
    file.append(timeNow() + ' ' + line);
}

LogOutput& logOutput() {
    static LogOutput& output = *(madeOutput = new LogOutput(logSettingsFromEnvironment()));
    return output;
}

void closeLogOutput() {
    delete madeOutput;
    madeOutput = nullptr;
}

} // namespace vorlen::log
