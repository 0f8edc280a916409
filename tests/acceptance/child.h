#pragma once

#include <windows.h>

#include <chrono>
#include <filesystem>
#include <optional>
#include <string>

namespace tests {

struct ChildResult {
    std::optional<DWORD> exitCode; // nothing: the program was ended because its time was over
    std::string output;            // standard output and standard error, as they were written
};

// Runs a program to its end, or until its time is over, in the folder and without input. Processes
// that it has started and that still run then are ended with it. Throws std::system_error when the
// program cannot be started.
ChildResult runChild(const std::filesystem::path& program, const std::wstring& arguments,
                     const std::filesystem::path& folder, std::chrono::milliseconds limit);

} // namespace tests
