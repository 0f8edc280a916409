#include "tests/fixtures/module_test.h"

#include <comdef.h>
#include <gmock/gmock.h>

#include <limits>
#include <thread>

namespace tests {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// The functions that work on the monitor list of the calling thread.
class ThreadsMonitorList : public RunningModuleTest {
protected:
    const vorlen::WindowEnumWrapper table = module.windowEnumWrapper();
};

TEST_F(ThreadsMonitorList, gives_a_handle_by_index) {
    EXPECT_EQ(table.getMonitorHandle(0), desktop.monitors.all[0].handle);
    EXPECT_EQ(table.getMonitorHandle(2), desktop.monitors.all[2].handle);
}

TEST_F(ThreadsMonitorList, gives_null_for_an_index_beyond_it) {
    for (const std::int32_t index : {-1, 3, 4, std::numeric_limits<std::int32_t>::min(),
                                     std::numeric_limits<std::int32_t>::max()}) {
        EXPECT_EQ(table.getMonitorHandle(index), nullptr) << index;
    }
}

TEST_F(ThreadsMonitorList, is_read_anew_without_the_service_and_the_core) {
    const HMONITOR added = desktop.addMonitor(LR"(\\.\DISPLAY4)", L"D", wideMode).handle;
    table.updateMonitorList();
    EXPECT_EQ(table.getMonitorHandle(3), added);
    EXPECT_EQ(desktop.journal.count("EnumDisplayMonitors"), 1u);
    EXPECT_THAT(core.names(), IsEmpty());
    EXPECT_EQ(module.exports->getMonitorList(nullptr, 0), 3);
}

TEST_F(ThreadsMonitorList, is_not_read_for_a_handle) {
    table.getMonitorHandle(0);
    EXPECT_THAT(desktop.displayCalls(), IsEmpty());
}

TEST_F(ThreadsMonitorList, fills_a_combo_box_with_device_names) {
    const HWND box = desktop.comboBoxes.add({L"left over"});
    table.registerMonitorComboBox(box);
    EXPECT_THAT(desktop.comboBoxes.entries(box), ElementsAre(display2, display1, display3));
}

TEST_F(ThreadsMonitorList, has_no_entry_for_all_displays) {
    const HWND box = desktop.comboBoxes.add();
    table.updateMonitorList();
    table.registerMonitorComboBox(box);
    EXPECT_THAT(desktop.comboBoxes.entries(box), ElementsAre(display2, display1, display3));
}

TEST_F(ThreadsMonitorList, throws_a_combo_boxs_refusal_at_the_host) {
    const HWND box = desktop.comboBoxes.add();
    desktop.journal.fail("SendMessageW", 3, CB_ERRSPACE);
    try {
        table.registerMonitorComboBox(box);
        ADD_FAILURE() << "nothing was thrown";
    } catch (const _com_error& error) {
        EXPECT_EQ(error.Error(), static_cast<HRESULT>(0xFFFFFFFE));
    }
    EXPECT_THAT(desktop.comboBoxes.entries(box), ElementsAre(display2));
}

TEST_F(ThreadsMonitorList, keeps_a_combo_box_as_it_is_when_it_is_read_anew) {
    const HWND box = desktop.comboBoxes.add();
    table.registerMonitorComboBox(box);
    desktop.monitors.all.pop_back();
    table.updateMonitorList();
    module.exports->updateMonitorList();
    EXPECT_THAT(desktop.comboBoxes.entries(box), ElementsAre(display2, display1, display3));
}

TEST_F(ThreadsMonitorList, is_not_there_on_another_thread) {
    const HWND box = desktop.comboBoxes.add({L"left over"});
    HMONITOR handle = desktop.monitors.all[0].handle;
    std::thread([&] {
        table.updateMonitorList();
        table.registerMonitorComboBox(box);
        handle = table.getMonitorHandle(0);
    }).join();
    EXPECT_EQ(handle, nullptr);
    EXPECT_THAT(desktop.displayCalls(), IsEmpty());
    EXPECT_THAT(desktop.comboBoxes.entries(box), ElementsAre(L"left over"));
}

} // namespace
} // namespace tests
