#include "simulation/import_redirect.h"
#include "tools/vorlen-monitor/failure.h"
#include "tools/vorlen-monitor/output.h"

#include <windows.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <stdexcept>
#include <string>

namespace vorlen::tool {
namespace {

using simulation::addressOf;
using simulation::ImportRedirect;
using testing::StartsWith;

int callsThatTookNothing = 0;

// A loop that tries again and again ends with a failed test.
BOOL takeNothing(DWORD* written) {
    *written = 0;
    if (++callsThatTookNothing > 10) {
        throw std::logic_error("the text is written again and again");
    }
    return TRUE;
}

WINAPI BOOL fileTakesNothing(HANDLE, const void*, DWORD, DWORD* written, OVERLAPPED*) {
    return takeNothing(written);
}

WINAPI BOOL consoleTakesNothing(HANDLE, const void*, DWORD, DWORD* written, void*) {
    return takeNothing(written);
}

std::string taken;

WINAPI BOOL fileTakesAByte(HANDLE, const void* bytes, DWORD, DWORD* written, OVERLAPPED*) {
    taken += *static_cast<const char*>(bytes);
    *written = 1;
    return TRUE;
}

WINAPI BOOL isConsole(HANDLE, DWORD* mode) {
    *mode = 0;
    return TRUE;
}

WINAPI BOOL isNotConsole(HANDLE, DWORD*) {
    return FALSE;
}

class OutputTest : public testing::Test {
protected:
    OutputTest() {
        callsThatTookNothing = 0;
        taken.clear();
    }

    static std::string failureOfWriting() {
        try {
            Output().write("text");
            return {};
        } catch (const Failure& failure) {
            EXPECT_EQ(failure.exitCode(), ExitCode::output);
            return failure.what();
        }
    }

    const HMODULE program = GetModuleHandleW(nullptr);
};

TEST_F(OutputTest, writes_the_rest_when_a_file_takes_a_part) {
    const ImportRedirect mode(program, "GetConsoleMode", addressOf(isNotConsole));
    const ImportRedirect write(program, "WriteFile", addressOf(fileTakesAByte));
    Output().write("every byte");
    EXPECT_EQ(taken, "every byte");
}

TEST_F(OutputTest, throws_when_a_file_takes_nothing) {
    const ImportRedirect mode(program, "GetConsoleMode", addressOf(isNotConsole));
    const ImportRedirect write(program, "WriteFile", addressOf(fileTakesNothing));
    EXPECT_THAT(failureOfWriting(), StartsWith("cannot write to standard output: error 29"));
}

TEST_F(OutputTest, throws_when_a_console_takes_nothing) {
    const ImportRedirect mode(program, "GetConsoleMode", addressOf(isConsole));
    const ImportRedirect write(program, "WriteConsoleW", addressOf(consoleTakesNothing));
    EXPECT_THAT(failureOfWriting(), StartsWith("cannot write to standard output: error 29"));
}

} // namespace
} // namespace vorlen::tool
