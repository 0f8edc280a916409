#include "monitor/display/monitor_list.h"
#include "tests/display/display_test.h"
#include "tests/support/other_thread.h"

#include <gmock/gmock.h>

#include <exception>
#include <string>

namespace tests {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class MonitorListTest : public DisplayTest {};

// What becomes of a list that is destroyed on another thread: ThreadObjectTest.
TEST_F(MonitorListTest, belongs_to_the_thread_that_made_it) {
    EXPECT_EQ(MonitorList::Get(), nullptr);
    {
        const MonitorList list(false);
        EXPECT_TRUE(onAnotherThread([] {
            const bool hadNone = MonitorList::Get() == nullptr;
            const MonitorList other(false);
            return hadNone && MonitorList::Get() == &other;
        }));
        EXPECT_EQ(MonitorList::Get(), &list);
    }
    EXPECT_EQ(MonitorList::Get(), nullptr);
}

TEST_F(MonitorListTest, refuses_a_second_list_on_the_same_thread) {
    const MonitorList first(false);
    std::string message;
    try {
        const MonitorList second(true);
    } catch (const std::exception& refusal) {
        message = refusal.what();
    }
    EXPECT_EQ(message, "MonitorList already exists for this thread!");
    EXPECT_EQ(MonitorList::Get(), &first);
}

TEST_F(MonitorListTest, reads_nothing_before_the_first_update) {
    desktop.addMonitor(display1, L"A", wideMode);
    const MonitorList list(true);
    EXPECT_THAT(list.GetMonitors(), IsEmpty());
    EXPECT_THAT(desktop.displayCalls(), IsEmpty());
}

TEST_F(MonitorListTest, reads_the_rectangle_of_any_monitor_at_each_call) {
    const MonitorList list(false);
    auto& monitor = desktop.monitors.add(display1, wideMode);
    monitor.rectangle = {-10, -20, 30, 40};
    const RECT rectangle = list.GetMonitorRect(monitor.handle);
    EXPECT_EQ(rectangle.left, -10);
    EXPECT_EQ(rectangle.top, -20);
    EXPECT_EQ(rectangle.right, 30);
    EXPECT_EQ(rectangle.bottom, 40);
    monitor.rectangle = {5, 6, 7, 8};
    EXPECT_EQ(list.GetMonitorRect(monitor.handle).right, 7);
    EXPECT_THAT(desktop.displayCalls(), ElementsAre("GetMonitorInfoW", "GetMonitorInfoW"));
}

TEST_F(MonitorListTest, returns_an_empty_rectangle_for_no_monitor) {
    const MonitorList list(false);
    const RECT rectangle = list.GetMonitorRect(reinterpret_cast<HMONITOR>(0x666));
    EXPECT_EQ(rectangle.left, 0);
    EXPECT_EQ(rectangle.top, 0);
    EXPECT_EQ(rectangle.right, 0);
    EXPECT_EQ(rectangle.bottom, 0);
}

} // namespace
} // namespace tests
