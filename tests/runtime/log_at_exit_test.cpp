#include "tests/runtime/logger_fixture.h"

#include <windows.h>

#include <gmock/gmock.h>

#include <stdexcept>

namespace tests {
namespace {

using testing::ElementsAre;

std::filesystem::path pathOf(HMODULE image) {
    wchar_t path[MAX_PATH]{};
    GetModuleFileNameW(image, path, MAX_PATH);
    return path;
}

// Its settings reach another process, which is watched while it ends.
class LogOfAnEndingProcess : public LoggerTest {
protected:
    LogOfAnEndingProcess() { fileName.set(file.wstring()); }

    DWORD exitCodeOfProgramThatLogs(const std::wstring& how) const {
        const auto program = pathOf(one->library.image()).replace_filename(L"ending_program.exe");
        std::wstring command = L"\"" + program.wstring() + L"\" " + how;
        STARTUPINFOW start{};
        start.cb = sizeof(start);
        start.dwFlags = STARTF_USESTDHANDLES;
        start.hStdError = GetStdHandle(STD_ERROR_HANDLE);
        PROCESS_INFORMATION process{};
        if (CreateProcessW(program.c_str(), command.data(), nullptr, nullptr, TRUE, 0, nullptr,
                           nullptr, &start, &process) == FALSE) {
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

    void expectLastWords() const {
        EXPECT_EQ(standardError.text(), "error last words\n");
        EXPECT_THAT(withoutTimes(linesInFile()), ElementsAre("error last words"));
    }
};

TEST_F(LogOfAnEndingProcess, gets_lines_from_exit_handlers_of_the_program) {
    EXPECT_EQ(exitCodeOfProgramThatLogs(L"exit-handler"), 0u);
    expectLastWords();
}

TEST_F(LogOfAnEndingProcess, gets_lines_from_static_objects_of_images) {
    EXPECT_EQ(exitCodeOfProgramThatLogs(L"static-object"), 0u);
    expectLastWords();
}

TEST_F(LogOfAnEndingProcess, gets_lines_after_the_exit_handlers_of_the_runtime_itself) {
    EXPECT_EQ(exitCodeOfProgramThatLogs(L"after-runtime"), 0u);
    expectLastWords();
}

TEST_F(LogOfAnEndingProcess, does_not_wait_for_a_thread_that_was_ended_in_the_middle_of_a_line) {
    EXPECT_EQ(exitCodeOfProgramThatLogs(L"ended-thread"), 0u);
    expectLastWords();
}

} // namespace
} // namespace tests
