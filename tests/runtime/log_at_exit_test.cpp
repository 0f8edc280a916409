#include "tests/runtime/runtime_fixtures.h"
#include "tests/support/exit_code.h"

#include <gmock/gmock.h>

namespace tests {
namespace {

using testing::ElementsAre;

// The log of another process, which is watched while it ends and inherits the settings.
class LogAtExit : public LoggerTest {
protected:
    LogAtExit() { fileName.set(file.wstring()); }

    DWORD exitCodeOfProgramThatLogs(const std::wstring& how) const {
        const auto program = pathOf(one->library.image()).replace_filename(L"ending_program.exe");
        return exitCodeOf(program, how);
    }

    void expectLastWords() const {
        EXPECT_EQ(standardError.text(), "error last words\n");
        EXPECT_THAT(withoutTimes(linesInFile()), ElementsAre("error last words"));
    }
};

TEST_F(LogAtExit, gets_lines_from_exit_handlers_of_the_program) {
    EXPECT_EQ(exitCodeOfProgramThatLogs(L"exit-handler"), 0u);
    expectLastWords();
}

TEST_F(LogAtExit, gets_lines_from_static_objects_of_images) {
    EXPECT_EQ(exitCodeOfProgramThatLogs(L"static-object"), 0u);
    expectLastWords();
}

TEST_F(LogAtExit, gets_lines_after_the_runtime_has_handled_the_end) {
    EXPECT_EQ(exitCodeOfProgramThatLogs(L"after-runtime"), 0u);
    expectLastWords();
}

TEST_F(LogAtExit, does_not_wait_for_a_thread_that_ended_while_writing) {
    EXPECT_EQ(exitCodeOfProgramThatLogs(L"ended-thread"), 0u);
    expectLastWords();
}

} // namespace
} // namespace tests
