#include <windows.h>

#include <gtest/gtest.h>

#include <thread>

namespace tests {
namespace {

void crash() {
    RaiseException(EXCEPTION_ACCESS_VIOLATION, EXCEPTION_NONCONTINUABLE, 0, nullptr);
}

TEST(CrashReportDeathTest, ends_a_crashed_program_with_a_line_and_code_3) {
    EXPECT_EXIT(crash(), testing::ExitedWithCode(3),
                "The test program crashed: exception 0xC0000005");
}

TEST(CrashReportDeathTest, covers_a_crash_on_another_thread) {
    EXPECT_EXIT(std::thread(crash).join(), testing::ExitedWithCode(3),
                "The test program crashed: exception 0xC0000005");
}

} // namespace
} // namespace tests
