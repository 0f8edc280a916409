#include "monitor/service/ui_records.h"
#include "tests/fixtures/module_test.h"
#include "tests/support/signal.h"

#include <gmock/gmock.h>

#include <array>
#include <functional>
#include <thread>
#include <vector>

namespace tests {
namespace {

using testing::IsEmpty;

// A state of the module in which there is no service.
struct Absence {
    const char* name;
    std::function<void(const ModuleUnderTest&)> enter;
};

class WithoutService : public ModuleTest, public testing::WithParamInterface<Absence> {
protected:
    void SetUp() override {
        desktop.addMonitor(display1, L"Model A", wideMode);
        desktop.addMonitor(display2, L"Model B", smallMode);
        desktop.windows.add(L"a");
        GetParam().enter(module);
        module.runtime.setMonitorName("left over");
        module.runtime.setMonitorModelName("left over");
        desktop.journal.clear();
    }

    // Nothing is asked of the platform or of the core, and no message is sent.
    void TearDown() override { EXPECT_THAT(desktop.journal.calls(), IsEmpty()); }
};

// Promise (Every exported function): Without a service (before init and after cleanup) every
// function of `vorlen/monitor.h` returns false, 0, null or zeros. It writes nothing and asks the
// system nothing.
TEST_P(WithoutService, exports_return_neutral_values_and_write_nothing) {
    const Exports& exports = *module.exports;
    MonitorListItem monitor{};
    WindowListItem window{};
    monitor.width = 12345;
    window.title[0] = L'#';
    for (const std::int32_t capacity : {-3, 0, 1}) {
        EXPECT_EQ(exports.getMonitorList(&monitor, capacity), 0);
        EXPECT_EQ(exports.getMonitorList(nullptr, capacity), 0);
        EXPECT_EQ(exports.getWindowList(&window, capacity), 0);
        EXPECT_EQ(exports.getWindowList(nullptr, capacity), 0);
    }
    EXPECT_EQ(exports.getMonitorData(), nullptr);
    EXPECT_FALSE(exports.checkMonitorStatus());
    EXPECT_EQ(exports.getLastMonitorStatus(), -1);
    EXPECT_FALSE(exports.getCheckedMonitor(&monitor));
    EXPECT_FALSE(exports.restartWindowList());
    EXPECT_EQ(exports.getMonitorModelName(), nullptr);
    EXPECT_EQ(exports.getVorlenMonitorModelName(), nullptr);
    const _VLRect rectangle = exports.getMonitorRect();
    EXPECT_EQ(rectangle.x, 0);
    EXPECT_EQ(rectangle.y, 0);
    EXPECT_EQ(rectangle.width, 0);
    EXPECT_EQ(rectangle.height, 0);
    EXPECT_EQ(monitor.width, 12345);
    EXPECT_EQ(window.title[0], L'#');
}

TEST_P(WithoutService, setting_and_updating_do_nothing) {
    module.exports->setVorlenMonitorModelName("Kit", 3);
    module.exports->setVorlenMonitorModelName(nullptr, -1);
    module.exports->updateMonitorList();
    module.monitorWrapper().setVorlenModelName("Kit");
    module.monitorWrapper().useWindowList(true);
    module.monitorWrapper().useWindowList(false);
    EXPECT_EQ(module.runtime.monitorModelName(), "left over");
    EXPECT_EQ(module.exports->getMonitorData(), nullptr);
}

TEST_P(WithoutService, runtimes_table_returns_empty_values) {
    const vorlen::MonitorWrapper& table = module.monitorWrapper();
    EXPECT_THAT(table.getMonitorList(), IsEmpty());
    EXPECT_TRUE(table.getWindowList().empty());
    EXPECT_STREQ(table.getCurrentMonitorName(), "");
    EXPECT_STREQ(table.getVorlenCameraName("Kit"), "");
    EXPECT_THAT(table.getVorlenModelName("device"), IsEmpty());
    EXPECT_THAT(table.getVorlenModelNameWide(L"device"), IsEmpty());
}

TEST_P(WithoutService, thread_has_no_lists) {
    const HWND box = desktop.comboBoxes.add({L"left over"});
    const vorlen::WindowEnumWrapper& table = module.windowEnumWrapper();
    table.updateMonitorList();
    table.registerMonitorComboBox(box);
    table.registerWindowComboBox(box);
    EXPECT_EQ(table.getMonitorHandle(0), nullptr);
    EXPECT_EQ(table.getWindowHandle(0), nullptr);
    EXPECT_EQ(desktop.comboBoxes.entries(box).size(), 1u);
}

// Each test loads the library again: the lists are made while the threads ask.
TEST_P(WithoutService, empty_lists_stay_the_same_for_all_threads) {
    using Addresses = std::array<const void*, 4>;
    const vorlen::MonitorWrapper& table = module.monitorWrapper();
    std::vector<Addresses> seen(8);
    Gate allReady(static_cast<int>(seen.size()));
    std::vector<std::thread> threads;
    for (Addresses& addresses : seen) {
        threads.emplace_back([&] {
            allReady.pass();
            addresses = {&table.getWindowList(), &table.getMonitorList(),
                         &table.getVorlenModelName("device"),
                         &table.getVorlenModelNameWide(L"device")};
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_THAT(seen, testing::Each(seen.front()));
    EXPECT_NE(seen.front()[2], seen.front()[3]) << "one list for narrow and wide names";
}

INSTANTIATE_TEST_SUITE_P(States, WithoutService,
                         testing::Values(Absence{"before_init",
                                                 [](const auto&) {
                                                 }},
                                         Absence{"after_cleanup",
                                                 [](const auto& module) {
                                                     module.init();
                                                     module.cleanup();
                                                 }},
                                         Absence{"after_a_second_life",
                                                 [](const auto& module) {
                                                     module.init();
                                                     module.cleanup();
                                                     module.init();
                                                     module.cleanup();
                                                     module.cleanup();
                                                 }}),
                         [](const auto& state) { return std::string(state.param.name); });

} // namespace
} // namespace tests
