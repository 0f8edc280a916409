#include "tests/fixtures/module_test.h"

#include <limits>

namespace tests {
namespace {

using namespace std::chrono_literals;

class MonitorRectExport : public RunningModuleTest {
protected:
    void expectRect(const DisplayMode& mode) {
        const _VLRect rectangle = module.exports->getMonitorRect();
        EXPECT_EQ(rectangle.x, mode.x);
        EXPECT_EQ(rectangle.y, mode.y);
        EXPECT_EQ(rectangle.width, static_cast<std::int32_t>(mode.width));
        EXPECT_EQ(rectangle.height, static_cast<std::int32_t>(mode.height));
    }
};

TEST_F(MonitorRectExport, returns_corner_and_size_of_the_current_monitor) {
    module.runtime.setMonitorIndex(1);
    expectRect(wideMode);
    module.runtime.setMonitorIndex(0);
    expectRect(smallMode);
}

// Promise (Names and rectangle): `getMonitorRect` returns all zeros when the runtime's index of the
// current monitor is negative or not below the number of monitors.
TEST_F(MonitorRectExport, returns_zeros_for_an_index_outside_of_the_list) {
    for (const std::int32_t index : {-1, -2, std::numeric_limits<std::int32_t>::min(), 3, 4,
                                     std::numeric_limits<std::int32_t>::max()}) {
        module.runtime.setMonitorIndex(index);
        expectRect({0, 0, 0, 0, 0});
    }
}

TEST_F(MonitorRectExport, returns_zeros_for_a_monitor_that_was_removed) {
    desktop.monitors.all.pop_back();
    module.exports->updateMonitorList();
    module.runtime.setMonitorIndex(2);
    expectRect({0, 0, 0, 0, 0});
}

TEST_F(MonitorRectExport, returns_zeros_without_monitors) {
    desktop.monitors.all.clear();
    module.exports->updateMonitorList();
    module.runtime.setMonitorIndex(0);
    // An empty list is read again at each call, which also clears the core's index.
    expectRect({0, 0, 0, 0, 0});
}

TEST_F(MonitorRectExport, follows_the_monitor_that_a_refresh_finds) {
    module.runtime.makeModelKnown("Model A");
    desktop.monitors.all[1].mode = DisplayMode{10, 20, 7680, 4320, 60};
    desktop.clock.advance(500ms);
    expectRect({10, 20, 7680, 4320, 60});
}

} // namespace
} // namespace tests
