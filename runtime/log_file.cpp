#include "runtime/log_file.h"

#include "platform/file.h"
#include "platform/safe_text.h"
#include "platform/text.h"
#include "runtime/complain.h"

#include <system_error>

namespace vorlen::log {

namespace {

// The calling thread's last error with the C library's message: the system's message would be in
// the user's language and code page.
std::string lastError() {
    const auto number = static_cast<int>(GetLastError());
    return "error " + std::to_string(number) + ": " +
           std::system_category().default_error_condition(number).message();
}

} // namespace

LogFile::LogFile(const std::wstring& name)
    : quotedName('"' + spellControls(toUtf8Lossy(name)) + '"') {
    if (name.empty()) {
        return;
    }
    // Other programs may read, write, rename and delete the file while it is open.
    file = CreateFileW(name.c_str(), FILE_APPEND_DATA,
                       FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr, OPEN_ALWAYS,
                       FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE) {
        const std::string reason = lastError();
        complain("the log file " + quotedName + " cannot be opened (" + reason +
                 "): set VORLEN_LOG_FILE to a file that may be written, in a folder that exists");
    }
}

LogFile::~LogFile() {
    if (file != INVALID_HANDLE_VALUE) {
        CloseHandle(file);
    }
}

void LogFile::append(std::string_view line) {
    if (file == INVALID_HANDLE_VALUE || writeAll(file, line) || failureSaid) {
        return;
    }
    failureSaid = true;
    const std::string reason = lastError();
    complain("the log file " + quotedName + " cannot be written, and lines of it are missing (" +
             reason + "): make room on its disk, or set VORLEN_LOG_FILE to a file elsewhere");
}

} // namespace vorlen::log
