#include "tests/lifecycle/ending_host.h"
#include "tests/support/exit_code.h"

#include <gtest/gtest.h>

namespace tests {
namespace {

// Hosts that end with a live service. Each calls every function of the module at the very end, from
// the static destructor of a plug-in: all of them must give neutral values.
DWORD endOf(const std::wstring& way) {
    return exitCodeOf(pathOf(nullptr).replace_filename(L"ending_host.exe"), way);
}

TEST(EndingProcess, may_return_from_main_with_a_service) {
    EXPECT_EQ(endOf(L"return"), endedWell);
}

TEST(EndingProcess, may_end_on_the_service_thread) {
    EXPECT_EQ(endOf(L"exit-on-service-thread"), endedWell);
}

TEST(EndingProcess, may_end_on_another_thread_than_the_service_thread) {
    EXPECT_EQ(endOf(L"exit-on-another-thread"), endedWell);
}

TEST(EndingProcess, may_end_after_the_service_thread) {
    EXPECT_EQ(endOf(L"after-service-thread"), endedWell);
}

TEST(EndingProcess, may_end_while_the_service_thread_waits) {
    EXPECT_EQ(endOf(L"service-thread-waits"), endedWell);
}

TEST(EndingProcess, does_not_wait_for_a_query_that_was_cut_off) {
    EXPECT_EQ(endOf(L"during-query"), endedWell);
}

TEST(EndingProcess, survives_a_runtime_that_cleans_up_in_its_own_detach) {
    EXPECT_EQ(endOf(L"runtime-cleans-up"), endedWell);
}

TEST(EndingProcess, goes_on_when_the_module_was_unloaded_on_another_thread) {
    EXPECT_EQ(endOf(L"unloaded-on-another-thread"), endedWell);
}

} // namespace
} // namespace tests
