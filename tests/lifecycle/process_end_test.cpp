#include "tests/lifecycle/ending_host.h"
#include "tests/support/exit_code.h"

#include <gtest/gtest.h>

#include <string>

namespace tests {
namespace {

// A host that ends with a live service in the way of this name: see ending_host.cpp. It calls every
// function of the module at the very end, from the static destructor of a plug-in: all of them must
// return neutral values.
class EndingProcess : public testing::TestWithParam<std::string> {};

// Promise (Loading, init, cleanup and unloading): A process may end with a live service, on any
// thread, also in the middle of a query. Functions that are called after that answer as without a
// service.
TEST_P(EndingProcess, may_have_a_live_service) {
    const std::wstring way(GetParam().begin(), GetParam().end());
    EXPECT_EQ(exitCodeOf(pathOf(nullptr).replace_filename(L"ending_host.exe"), way), endedWell);
}

INSTANTIATE_TEST_SUITE_P(Way, EndingProcess,
                         testing::Values("return_from_main", "exit_on_service_thread",
                                         "exit_on_another_thread", "after_service_thread",
                                         "while_service_thread_waits", "during_query",
                                         "runtime_cleans_up", "unloaded_on_another_thread"),
                         [](const auto& way) { return way.param; });

} // namespace
} // namespace tests
