#include "monitor/display/monitor_list.h"
#include "tests/display/display_test.h"
#include "tests/support/account.h"
#include "tests/support/other_thread.h"

#include <gmock/gmock.h>

#include <exception>
#include <memory>
#include <string>

namespace tests {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

class MonitorListOfThread : public DisplayTest {};

TEST_F(MonitorListOfThread, is_null_where_none_was_made) {
    EXPECT_EQ(MonitorList::Get(), nullptr);
    const MonitorList list(false);
    EXPECT_EQ(onAnotherThread([] { return MonitorList::Get(); }), nullptr);
}

TEST_F(MonitorListOfThread, is_the_one_that_was_made_on_the_thread) {
    const MonitorList list(false);
    EXPECT_EQ(MonitorList::Get(), &list);
    EXPECT_TRUE(onAnotherThread([] {
        const MonitorList other(false);
        return MonitorList::Get() == &other;
    }));
    EXPECT_EQ(MonitorList::Get(), &list);
}

TEST_F(MonitorListOfThread, stays_the_first_when_a_second_is_refused) {
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

TEST_F(MonitorListOfThread, is_forgotten_when_it_is_destroyed) {
    { const MonitorList list(false); }
    EXPECT_EQ(MonitorList::Get(), nullptr);
    const MonitorList next(false);
    EXPECT_EQ(MonitorList::Get(), &next);
}

TEST_F(MonitorListOfThread, is_not_found_once_it_was_destroyed_on_another_thread) {
    expectBlocksLeft(1); // its entry, until the program ends
    auto list = std::make_unique<MonitorList>(false);
    onAnotherThread([&] { list.reset(); });
    EXPECT_EQ(MonitorList::Get(), nullptr);
    const MonitorList next(false);
    EXPECT_EQ(MonitorList::Get(), &next);
}

TEST_F(MonitorListOfThread, is_cleared_by_any_list_that_the_thread_destroys) {
    expectBlocksLeft(1); // the entry of the first list, until the program ends
    auto list = std::make_unique<MonitorList>(false);
    onAnotherThread([&] {
        const MonitorList own(false);
        list.reset();
        EXPECT_EQ(MonitorList::Get(), nullptr);
    });
}

class MonitorListContent : public DisplayTest {
protected:
    static std::vector<std::wstring> namesIn(const MonitorList& list) {
        std::vector<std::wstring> names;
        for (const MonitorInfo& monitor : list.GetMonitors()) {
            names.push_back(monitor.deviceName);
        }
        return names;
    }
};

TEST_F(MonitorListContent, is_empty_until_the_first_update) {
    desktop.addMonitor(display1, L"A", wideMode);
    const MonitorList list(true);
    EXPECT_THAT(list.GetMonitors(), IsEmpty());
    EXPECT_THAT(desktop.displayCalls(), IsEmpty());
}

TEST_F(MonitorListContent, is_replaced_by_each_update) {
    desktop.addMonitor(display1, L"A", wideMode);
    MonitorList list(false);
    list.Update();
    EXPECT_THAT(namesIn(list), ElementsAre(display1));

    desktop.monitors.all.clear();
    desktop.addMonitor(display2, L"B", wideMode);
    list.Update();
    EXPECT_THAT(namesIn(list), ElementsAre(display2));
}

TEST_F(MonitorListContent, has_all_displays_only_if_the_list_was_made_so) {
    desktop.addMonitor(display1, L"A", wideMode);
    desktop.addMonitor(display2, L"B", wideMode);
    {
        MonitorList list(true);
        list.Update();
        EXPECT_THAT(namesIn(list), ElementsAre(display1, display2, L"All Displays"));
        list.Update();
        EXPECT_THAT(namesIn(list), ElementsAre(display1, display2, L"All Displays"));
    }
    MonitorList list(false);
    list.Update();
    EXPECT_THAT(namesIn(list), ElementsAre(display1, display2));
}

class MonitorRectangle : public DisplayTest {
protected:
    MonitorList list{false};
};

TEST_F(MonitorRectangle, is_that_of_any_monitor_listed_or_not) {
    auto& monitor = desktop.monitors.add(display1, wideMode);
    monitor.rectangle = {-10, -20, 30, 40};
    const RECT rectangle = list.GetMonitorRect(monitor.handle);
    EXPECT_EQ(rectangle.left, -10);
    EXPECT_EQ(rectangle.top, -20);
    EXPECT_EQ(rectangle.right, 30);
    EXPECT_EQ(rectangle.bottom, 40);
}

TEST_F(MonitorRectangle, is_read_from_the_system_at_each_call) {
    auto& monitor = desktop.monitors.add(display1, wideMode);
    list.Update();
    desktop.journal.clear();
    monitor.rectangle = {1, 2, 3, 4};
    EXPECT_EQ(list.GetMonitorRect(monitor.handle).right, 3);
    monitor.rectangle = {5, 6, 7, 8};
    EXPECT_EQ(list.GetMonitorRect(monitor.handle).right, 7);
    EXPECT_THAT(desktop.displayCalls(), ElementsAre("GetMonitorInfoW", "GetMonitorInfoW"));
}

TEST_F(MonitorRectangle, is_all_zeros_for_a_handle_of_no_monitor) {
    const RECT rectangle = list.GetMonitorRect(reinterpret_cast<HMONITOR>(0x666));
    EXPECT_EQ(rectangle.left, 0);
    EXPECT_EQ(rectangle.top, 0);
    EXPECT_EQ(rectangle.right, 0);
    EXPECT_EQ(rectangle.bottom, 0);
}

} // namespace
} // namespace tests
