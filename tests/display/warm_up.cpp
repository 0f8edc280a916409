// Makes what the linked objects make once, on first use, before the first test: no test has to
// account for it.

#include "monitor/display/monitor_list.h"

#include <gtest/gtest.h>

namespace tests {
namespace {

class DisplayWarmUp final : public testing::Environment {
    void SetUp() override { EXPECT_EQ(MonitorList::Get(), nullptr); }
};

[[maybe_unused]] const auto* const warmUp = testing::AddGlobalTestEnvironment(new DisplayWarmUp);

} // namespace
} // namespace tests
