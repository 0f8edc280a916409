// The program behind acceptance.cmd, in the folder tests of the kit. It takes no arguments. Exit
// code 0 when everything has passed, else 1.

#include "tests/acceptance/acceptance.h"

#include <windows.h>

#include <array>
#include <cstdio>
#include <exception>

namespace {

std::filesystem::path ownPath() {
    std::array<wchar_t, 32'768> path{};
    GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size()));
    return path.data();
}

} // namespace

int main() {
    // A program that crashes or misses a library ends without a dialog. Children inherit this.
    SetErrorMode(SEM_FAILCRITICALERRORS | SEM_NOGPFAULTERRORBOX | SEM_NOOPENFILEERRORBOX);
    try {
        return tests::runAcceptance(ownPath().parent_path().parent_path()) ? 0 : 1;
    } catch (const std::exception& error) {
        static_cast<void>(std::fprintf(stderr, "acceptance: %s\n", error.what()));
        return 1;
    }
}
