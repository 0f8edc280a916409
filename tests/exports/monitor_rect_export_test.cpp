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

TEST_F(MonitorRectExport, is_corner_and_size_of_the_monitor_at_the_cores_index) {
    module.runtime.setMonitorIndex(1);
    expectRect(wideMode);
    module.runtime.setMonitorIndex(0);
    expectRect(smallMode);
}

TEST_F(MonitorRectExport, is_all_zeros_behind_the_last_monitor) {
    for (const std::int32_t index : {3, 4, std::numeric_limits<std::int32_t>::max()}) {
        module.runtime.setMonitorIndex(index);
        expectRect({0, 0, 0, 0, 0});
    }
}

TEST_F(MonitorRectExport, does_not_remember_a_monitor_that_has_gone_from_the_end_of_the_list) {
    desktop.monitors.all.pop_back();
    module.exports->updateMonitorList();
    module.runtime.setMonitorIndex(2);
    expectRect({0, 0, 0, 0, 0});
}

TEST_F(MonitorRectExport, is_all_zeros_for_a_negative_index) {
    for (const std::int32_t index : {-1, -2, std::numeric_limits<std::int32_t>::min()}) {
        module.runtime.setMonitorIndex(index);
        expectRect({0, 0, 0, 0, 0});
    }
}

TEST_F(MonitorRectExport, is_all_zeros_without_monitors) {
    desktop.monitors.all.clear();
    module.exports->updateMonitorList();
    module.runtime.setMonitorIndex(0);
    // Reading anew, as an empty list is at each call, clears the core's index, too.
    expectRect({0, 0, 0, 0, 0});
}

TEST_F(MonitorRectExport, follows_the_monitor_that_the_core_recognises_when_it_is_read_anew) {
    module.runtime.makeModelKnown("Model A");
    desktop.monitors.all[1].mode = DisplayMode{10, 20, 7680, 4320, 60};
    desktop.clock.advance(500ms);
    expectRect({10, 20, 7680, 4320, 60});
}

} // namespace
} // namespace tests
