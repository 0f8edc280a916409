#pragma once

#include <windows.h>

#include <string>
#include <string_view>

namespace vorlen::log {

// A file that grows by whole lines. What cannot be done is said once on standard error; nothing
// throws but the exhaustion of memory. Not for several threads at once.
class LogFile {
public:
    // Opens the file, or makes it. Without a name there is none, and appending does nothing.
    explicit LogFile(const std::wstring& name);
    ~LogFile();
    LogFile(const LogFile&) = delete;
    LogFile& operator=(const LogFile&) = delete;

    // Hands the line to the system before it returns.
    void append(std::string_view line);

private:
    HANDLE file = INVALID_HANDLE_VALUE;
    std::string quotedName;
    bool failureSaid = false;
};

} // namespace vorlen::log
