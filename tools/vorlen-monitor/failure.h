#pragma once

#include <windows.h>

#include <exception>
#include <stdexcept>
#include <string>

namespace vorlen::tool {

// What the process answers.
enum class ExitCode : int {
    success = 0,
    checkNotPassed = 1,
    usage = 2,
    libraries = 3,
    output = 4,
    internal = 5,
};

// An error that the user can understand: what() is one sentence in UTF-8 that says what was wrong
// and what would be right.
class Failure : public std::runtime_error {
public:
    Failure(ExitCode exitCode, const std::string& message)
        : std::runtime_error(message), code(exitCode) {}

    ExitCode exitCode() const { return code; }

private:
    ExitCode code;
};

// The message for an error that this program has no words of its own for; null for one that is no
// standard exception.
std::string unexpected(const std::exception* error);

// The system's words for one of its error numbers, with the number: "error 5: Access denied".
std::string systemError(DWORD error);

} // namespace vorlen::tool
