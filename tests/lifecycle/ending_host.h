#pragma once

#include <windows.h>

namespace tests {

// The exit codes of ending_host.exe.
enum EndOfHost : DWORD {
    endedWell = 42, // set by the code that runs last, so that no crash in front of it can
    crashed = 3,
    answeredWrong = 4,
    failedToStart = 5,
};

} // namespace tests
