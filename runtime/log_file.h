#pragma once

#include <windows.h>

#include <string>
#include <string_view>

namespace vorlen::log {

// A file to which whole lines are appended. The first failure is reported on standard error.
// Functions throw only std::bad_alloc. Not for several threads at once.
class LogFile {
public:
    // Opens or creates the file. With an empty name there is no file, and append() does nothing.
    explicit LogFile(const std::wstring& name);
    ~LogFile();
    LogFile(const LogFile&) = delete;
    LogFile& operator=(const LogFile&) = delete;

    // The line has been passed to the system when this returns.
    void append(std::string_view line);

private:
    HANDLE file = INVALID_HANDLE_VALUE;
    std::string quotedName;
    bool failureSaid = false;
};

} // namespace vorlen::log
