#include "tools/vorlen-monitor/output.h"

#include "platform/file.h"
#include "platform/safe_text.h"
#include "tools/vorlen-monitor/failure.h"

#include <algorithm>
#include <string>

namespace vorlen::tool {

namespace {

// Consoles of older systems accept at most 64 KB in one call.
constexpr std::size_t consoleUnitsAtOnce = 8000;

bool writeToConsole(HANDLE console, std::wstring_view text) {
    while (!text.empty()) {
        std::size_t length = std::min(text.size(), consoleUnitsAtOnce);
        if (length < text.size() && IS_HIGH_SURROGATE(text[length - 1])) {
            --length; // a surrogate pair must not be split
        }
        DWORD written = 0;
        if (WriteConsoleW(console, text.data(), static_cast<DWORD>(length), &written, nullptr) ==
            FALSE) {
            return false;
        }
        if (written == 0) {
            SetLastError(ERROR_WRITE_FAULT);
            return false;
        }
        text.remove_prefix(written);
    }
    return true;
}

bool writeText(HANDLE handle, std::string_view text) {
    DWORD mode = 0;
    const bool isConsole = GetConsoleMode(handle, &mode) != FALSE;
    return isConsole ? writeToConsole(handle, toUtf16Lossy(text)) : writeAll(handle, text);
}

std::string whyNotWritten(DWORD error) {
    switch (error) {
    case ERROR_BROKEN_PIPE:
    case ERROR_NO_DATA:
    case ERROR_PIPE_NOT_CONNECTED:
        return "the program that reads it has closed the pipe; it has to read to the end";
    case ERROR_DISK_FULL:
    case ERROR_HANDLE_DISK_FULL:
        return "there is no space left on its disk or device; make room or send it elsewhere";
    case ERROR_INVALID_HANDLE:
        return "it is closed; send it to a console, a file or a pipe";
    default:
        return systemError(error) + "; send it to a console, a file or a pipe that can be written";
    }
}

} // namespace

Output::Output() : handle(GetStdHandle(STD_OUTPUT_HANDLE)) {}

void Output::write(std::string_view text) const {
    if (!writeText(handle, text)) {
        throw Failure(ExitCode::output,
                      "cannot write to standard output: " + whyNotWritten(GetLastError()));
    }
}

void complain(std::string_view message, std::string_view program) {
    const std::string line = std::string(program) + ": " + spellControls(message) + "\n";
    // When standard error cannot be written either, only the exit code reports the failure.
    static_cast<void>(writeText(GetStdHandle(STD_ERROR_HANDLE), line));
}

} // namespace vorlen::tool
