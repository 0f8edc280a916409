// What the objects linked into this program make once, on first use, is made before the first test.

#include "monitor/windows/capture_filter.h"
#include "monitor/windows/window_list.h"

#include <gtest/gtest.h>

namespace tests {
namespace {

class WindowsWarmUp final : public testing::Environment {
    void SetUp() override {
        EXPECT_EQ(WindowList::Get(), nullptr);
        EXPECT_FALSE(IsKnownBlockedWindow(WindowInfo(nullptr)));
    }
};

[[maybe_unused]] const auto* const warmUp = testing::AddGlobalTestEnvironment(new WindowsWarmUp);

} // namespace
} // namespace tests
