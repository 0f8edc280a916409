// What the objects linked into this program make once, on first use, is made before the first test.

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
