#pragma once

#include <windows.h>

#include <filesystem>
#include <stdexcept>
#include <string>

namespace tests {

// Runs the program with one argument and with this program's standard error, and returns its exit
// code; STILL_ACTIVE when it had to be ended because it did not end within a minute. Throws
// std::runtime_error when it cannot be started.
inline DWORD exitCodeOf(const std::filesystem::path& program, const std::wstring& argument) {
    std::wstring command = L"\"" + program.wstring() + L"\" " + argument;
    STARTUPINFOW start{};
    start.cb = sizeof(start);
    start.dwFlags = STARTF_USESTDHANDLES;
    start.hStdError = GetStdHandle(STD_ERROR_HANDLE);
    PROCESS_INFORMATION process{};
    if (CreateProcessW(program.c_str(), command.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr,
                       &start, &process) == FALSE) {
        throw std::runtime_error("cannot start " + program.string());
    }
    CloseHandle(process.hThread);
    constexpr DWORD deadline = 60'000;
    if (WaitForSingleObject(process.hProcess, deadline) != WAIT_OBJECT_0) {
        TerminateProcess(process.hProcess, STILL_ACTIVE);
        WaitForSingleObject(process.hProcess, deadline);
    }
    DWORD code = STILL_ACTIVE;
    GetExitCodeProcess(process.hProcess, &code);
    CloseHandle(process.hProcess);
    return code;
}

// The path of an image of this process; of the program for null.
inline std::filesystem::path pathOf(HMODULE image) {
    wchar_t path[MAX_PATH]{};
    GetModuleFileNameW(image, path, MAX_PATH);
    return path;
}

} // namespace tests
