#include "tests/acceptance/child.h"
#include "tests/support/exit_code.h"

#include <windows.h>

#include <gmock/gmock.h>
#include <tlhelp32.h>

#include <chrono>
#include <system_error>

namespace tests {
namespace {

using testing::HasSubstr;
using namespace std::chrono_literals;

class Child : public testing::Test {
protected:
    const std::filesystem::path folder = pathOf(nullptr).parent_path() / L"acceptance";

    ChildResult run(const std::wstring& test, std::chrono::milliseconds limit = 60s) const {
        return runChild(folder / program, L"--gtest_filter=StandIn." + test, folder, limit);
    }

    // Whether all processes of the program end within a minute.
    static bool allEnd() {
        const auto deadline = std::chrono::steady_clock::now() + 60s;
        while (isRunning() && std::chrono::steady_clock::now() < deadline) {
            Sleep(1);
        }
        return !isRunning();
    }

private:
    static bool isRunning() {
        const HANDLE snapshot = CreateToolhelp32Snapshot(TH32CS_SNAPPROCESS, 0);
        PROCESSENTRY32W entry{};
        entry.dwSize = sizeof(entry);
        bool found = false;
        for (BOOL more = Process32FirstW(snapshot, &entry); more != FALSE && !found;
             more = Process32NextW(snapshot, &entry)) {
            found = std::wstring(entry.szExeFile) == program;
        }
        CloseHandle(snapshot);
        return found;
    }

    static constexpr const wchar_t* program = L"acceptance_stand_in.exe";
};

TEST_F(Child, has_an_exit_code_and_an_output) {
    const ChildResult passed = run(L"passes");
    EXPECT_EQ(passed.exitCode, DWORD{0});
    EXPECT_THAT(passed.output, HasSubstr("a line of output"));
    EXPECT_EQ(run(L"fails").exitCode, DWORD{1});
}

TEST_F(Child, is_ended_with_its_own_children_when_its_time_is_over) {
    EXPECT_EQ(run(L"waits_for_another_process", 0ms).exitCode, std::nullopt);
    EXPECT_TRUE(allEnd());
}

TEST_F(Child, leaves_no_process) {
    EXPECT_EQ(run(L"leaves_a_process").exitCode, DWORD{0});
    EXPECT_TRUE(allEnd());
}

TEST_F(Child, that_cannot_be_started_is_an_error) {
    EXPECT_THROW(runChild(folder / L"missing.exe", L"", folder, 60s), std::system_error);
}

TEST_F(Child, leaves_no_file) {
    run(L"passes");
    EXPECT_FALSE(exists(folder / L"output.txt"));
}

} // namespace
} // namespace tests
