#include "tests/exports/extremes.h"
#include "tests/fixtures/module_test.h"

#include <gmock/gmock.h>

namespace tests {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// The functions that work on the lists of the calling thread: three monitors and two windows. On
// another thread: WrongThread.
class WindowEnumWrapperTable : public RunningModuleTest {
protected:
    void SetUp() override {
        a = desktop.windows.add(L"a").handle;
        b = desktop.windows.add(L"b").handle;
        RunningModuleTest::SetUp();
    }

    const vorlen::WindowEnumWrapper table = module.windowEnumWrapper();
    HWND box = desktop.comboBoxes.add({L"left over"});
    HWND a = nullptr;
    HWND b = nullptr;
};

TEST_F(WindowEnumWrapperTable, returns_the_monitor_at_an_index_and_reads_nothing) {
    EXPECT_EQ(table.getMonitorHandle(0), desktop.monitors.all[0].handle);
    EXPECT_EQ(table.getMonitorHandle(2), desktop.monitors.all[2].handle);
    for (const std::int32_t index : {-1, 3, 4, smallest, largest}) {
        EXPECT_EQ(table.getMonitorHandle(index), nullptr) << index;
    }
    EXPECT_THAT(desktop.displayCalls(), IsEmpty());
}

TEST_F(WindowEnumWrapperTable, returns_the_window_at_an_index_of_the_live_list) {
    EXPECT_EQ(table.getWindowHandle(0), a);
    EXPECT_EQ(table.getWindowHandle(1), b);
    for (const std::int32_t index : {-1, 2, 3, smallest, largest}) {
        EXPECT_EQ(table.getWindowHandle(index), nullptr) << index;
    }
    desktop.eventHooks.deliver(EVENT_OBJECT_DESTROY, a);
    EXPECT_EQ(table.getWindowHandle(0), b);
    EXPECT_EQ(table.getWindowHandle(1), nullptr);
    const HWND c = desktop.windows.add(L"c").handle;
    desktop.eventHooks.deliver(EVENT_OBJECT_SHOW, c);
    EXPECT_EQ(table.getWindowHandle(1), c);
}

TEST_F(WindowEnumWrapperTable, reads_the_monitors_without_service_and_core) {
    const HMONITOR added = desktop.addMonitor(LR"(\\.\DISPLAY4)", L"D", wideMode).handle;
    table.updateMonitorList();
    EXPECT_EQ(table.getMonitorHandle(3), added);
    EXPECT_EQ(desktop.journal.count("EnumDisplayMonitors"), 1u);
    EXPECT_THAT(core.names(), IsEmpty());
    EXPECT_EQ(module.exports->getMonitorList(nullptr, 0), 3);
}

TEST_F(WindowEnumWrapperTable, fills_a_combo_box_of_monitors_when_it_is_registered) {
    table.registerMonitorComboBox(box);
    EXPECT_THAT(desktop.comboBoxes.entries(box), ElementsAre(display2, display1, display3));
    desktop.monitors.all.pop_back();
    table.updateMonitorList();
    module.exports->updateMonitorList();
    EXPECT_THAT(desktop.comboBoxes.entries(box), ElementsAre(display2, display1, display3));
    table.registerMonitorComboBox(box);
    EXPECT_THAT(desktop.comboBoxes.entries(box), ElementsAre(display2, display1));
}

TEST_F(WindowEnumWrapperTable, fills_a_combo_box_of_windows_and_updates_it) {
    table.registerWindowComboBox(box);
    EXPECT_THAT(desktop.comboBoxes.entries(box), ElementsAre(L"a", L"b"));
    desktop.eventHooks.deliver(EVENT_OBJECT_SHOW, desktop.windows.add(L"c").handle);
    desktop.eventHooks.deliver(EVENT_OBJECT_DESTROY, a);
    EXPECT_THAT(desktop.comboBoxes.entries(box), ElementsAre(L"b", L"c"));
}

TEST_F(WindowEnumWrapperTable, leaves_a_combo_box_alone_while_the_windows_are_off) {
    module.monitorWrapper().useWindowList(false);
    table.registerWindowComboBox(box);
    EXPECT_THAT(desktop.comboBoxes.entries(box), ElementsAre(L"left over"));
}

} // namespace
} // namespace tests
