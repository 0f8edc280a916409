#include <windows.h>

#include <gtest/gtest.h>

#include <thread>

namespace tests {
namespace {

void crash() {
    RaiseException(EXCEPTION_ACCESS_VIOLATION, EXCEPTION_NONCONTINUABLE, 0, nullptr);
}

TEST(CrashReportDeathTest, a_crash_fails_the_program_and_is_told) {
    EXPECT_EXIT(crash(), testing::ExitedWithCode(3),
                "The test program crashed: exception 0xC0000005");
}

TEST(CrashReportDeathTest, a_crash_on_another_thread_does_so_as_well) {
    EXPECT_EXIT(std::thread(crash).join(), testing::ExitedWithCode(3),
                "The test program crashed: exception 0xC0000005");
}

} // namespace
} // namespace tests
