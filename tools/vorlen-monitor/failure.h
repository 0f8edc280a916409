#pragma once

#include <windows.h>

#include <exception>
#include <stdexcept>
#include <string>

namespace vorlen::tool {

// The exit codes of the process.
enum class ExitCode : int {
    success = 0,
    checkNotPassed = 1,
    usage = 2,
    libraries = 3,
    output = 4,
    internal = 5,
};

// An error that is reported to the user: what() is one sentence in UTF-8 that says what was wrong
// and what would be right.
class Failure : public std::runtime_error {
public:
    Failure(ExitCode exitCode, const std::string& message)
        : std::runtime_error(message), code(exitCode) {}

    ExitCode exitCode() const { return code; }

private:
    ExitCode code;
};

// The message for an exception that is not a Failure; null for one that is not a std::exception.
std::string unexpected(const std::exception* error);

// An error number or HRESULT of the system with the system's message, such as "error 5: Access
// denied".
std::string systemError(DWORD error);

} // namespace vorlen::tool
