// A test program with every outcome. The tests of the kit choose one with --gtest_filter.

#include "tests/support/exit_code.h"

#include <windows.h>

#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <string>

namespace tests {
namespace {

void startWaitingProcess() {
    std::wstring commandLine = L"stand_in --gtest_filter=StandIn.waits";
    STARTUPINFOW startup{};
    startup.cb = sizeof(startup);
    PROCESS_INFORMATION information{};
    ASSERT_NE(CreateProcessW(pathOf(nullptr).c_str(), commandLine.data(), nullptr, nullptr, TRUE, 0,
                             nullptr, nullptr, &startup, &information),
              FALSE);
    CloseHandle(information.hThread);
    CloseHandle(information.hProcess);
}

TEST(StandIn, passes) {
    std::puts("a line of output");
    RecordProperty("answer", "found");
    RecordProperty("detail count", "3");
}

TEST(StandIn, fails) {
    EXPECT_EQ(std::wstring(L"a \"private\" title"), std::wstring());
}

TEST(StandIn, is_not_measured) {
    RecordProperty("not measured", "there is nothing to measure");
    GTEST_SKIP();
}

TEST(StandIn, ends_early) {
    std::exit(0);
}

TEST(StandIn, ends_early_after_a_long_title) {
    std::printf("before \"%s\" behind\n", std::string(70'000, 'x').c_str());
    std::exit(0);
}

TEST(StandIn, waits) {
    Sleep(INFINITE);
}

TEST(StandIn, waits_for_another_process) {
    startWaitingProcess();
    Sleep(INFINITE);
}

TEST(StandIn, leaves_a_process) {
    startWaitingProcess();
}

TEST(CrashingStandIn, crashes) {
    std::abort();
}

TEST(HangingStandIn, waits) {
    Sleep(INFINITE);
}

TEST(StandIn, sees_no_setting_of_the_user) {
    EXPECT_EQ(GetEnvironmentVariableW(L"VORLEN_KIT_MODELS", nullptr, 0), 0u);
}

} // namespace
} // namespace tests
