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
        GetParam().enter(module);
        module.runtime.setMonitorName("left over");
        module.runtime.setMonitorModelName("left over");
        desktop.journal.clear();
    }

    // Nothing is asked of the platform or of the core, and no message is sent.
    void TearDown() override { EXPECT_THAT(desktop.journal.calls(), IsEmpty()); }
};

TEST_P(WithoutService, exports_return_false_zero_and_null) {
    const Exports& exports = *module.exports;
    EXPECT_EQ(exports.getMonitorData(), nullptr);
    EXPECT_FALSE(exports.checkMonitorStatus());
    EXPECT_EQ(exports.getMonitorModelName(), nullptr);
    EXPECT_EQ(exports.getVorlenMonitorModelName(), nullptr);
}

TEST_P(WithoutService, no_monitor_was_judged_and_the_record_stays_untouched) {
    MonitorListItem monitor{};
    monitor.width = 12345;
    EXPECT_FALSE(module.exports->getCheckedMonitor(&monitor));
    EXPECT_EQ(monitor.width, 12345);
    EXPECT_EQ(module.exports->getLastMonitorStatus(), -1);
}

TEST_P(WithoutService, lists_are_empty_whatever_is_asked_and_arrays_stay_untouched) {
    MonitorListItem monitor{};
    WindowListItem window{};
    monitor.width = 12345;
    window.title[0] = L'#';
    for (const std::int32_t capacity : {-3, 0, 1}) {
        EXPECT_EQ(module.exports->getMonitorList(&monitor, capacity), 0);
        EXPECT_EQ(module.exports->getMonitorList(nullptr, capacity), 0);
        EXPECT_EQ(module.exports->getWindowList(&window, capacity), 0);
        EXPECT_EQ(module.exports->getWindowList(nullptr, capacity), 0);
    }
    EXPECT_EQ(monitor.width, 12345);
    EXPECT_EQ(window.title[0], L'#');
}

TEST_P(WithoutService, the_rectangle_is_all_zeros) {
    const _VLRect rectangle = module.exports->getMonitorRect();
    EXPECT_EQ(rectangle.x, 0);
    EXPECT_EQ(rectangle.y, 0);
    EXPECT_EQ(rectangle.width, 0);
    EXPECT_EQ(rectangle.height, 0);
}

TEST_P(WithoutService, setting_and_updating_do_nothing) {
    module.exports->setVorlenMonitorModelName("Kit", 3);
    module.exports->setVorlenMonitorModelName(nullptr, -1);
    module.exports->updateMonitorList();
    EXPECT_EQ(module.runtime.monitorModelName(), "left over");
}

TEST_P(WithoutService, there_is_no_window_list_to_restart) {
    EXPECT_FALSE(module.exports->restartWindowList());
}

TEST_P(WithoutService, the_runtimes_table_gives_empty_values_that_stay) {
    const vorlen::MonitorWrapper& table = module.monitorWrapper();
    EXPECT_THAT(table.getMonitorList(), IsEmpty());
    EXPECT_EQ(&table.getMonitorList(), &table.getMonitorList());
    EXPECT_TRUE(table.getWindowList().empty());
    EXPECT_EQ(&table.getWindowList(), &table.getWindowList());
    EXPECT_STREQ(table.getCurrentMonitorName(), "");
    EXPECT_STREQ(table.getVorlenCameraName("Kit"), "");
    EXPECT_THAT(table.getVorlenModelName("device"), IsEmpty());
    EXPECT_THAT(table.getVorlenModelNameWide(L"device"), IsEmpty());
    EXPECT_EQ(&table.getVorlenModelName("a"), &table.getVorlenModelName("b"));
    EXPECT_NE(&table.getVorlenModelName("a"), &table.getVorlenModelNameWide(L"a"));
}

TEST_P(WithoutService, the_runtimes_table_takes_nothing) {
    module.monitorWrapper().setVorlenModelName("Kit");
    module.monitorWrapper().useWindowList(true);
    module.monitorWrapper().useWindowList(false);
    EXPECT_EQ(module.exports->getMonitorData(), nullptr);
}

TEST_P(WithoutService, the_threads_lists_are_not_there) {
    const HWND box = desktop.comboBoxes.add({L"left over"});
    const vorlen::WindowEnumWrapper& table = module.windowEnumWrapper();
    table.updateMonitorList();
    table.registerMonitorComboBox(box);
    table.registerWindowComboBox(box);
    EXPECT_EQ(table.getMonitorHandle(0), nullptr);
    EXPECT_EQ(table.getWindowHandle(0), nullptr);
    EXPECT_EQ(desktop.comboBoxes.entries(box).size(), 1u);
}

// For the first time: each test loads the library again.
TEST_P(WithoutService, empty_lists_are_the_same_for_threads_that_ask_at_once) {
    using Addresses = std::array<const void*, 4>;
    const vorlen::MonitorWrapper& table = module.monitorWrapper();
    std::vector<Addresses> seen(8);
    Gate allReady(static_cast<int>(seen.size()));
    std::vector<std::thread> threads;
    for (Addresses& addresses : seen) {
        threads.emplace_back([&] {
            allReady.pass();
            const auto& windows = table.getWindowList();
            const auto& monitors = table.getMonitorList();
            const auto& models = table.getVorlenModelName("device");
            const auto& modelsOfWide = table.getVorlenModelNameWide(L"device");
            EXPECT_TRUE(windows.empty() && monitors.empty());
            EXPECT_TRUE(models.empty() && modelsOfWide.empty());
            addresses = {&windows, &monitors, &models, &modelsOfWide};
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_THAT(seen, testing::Each(seen.front()));
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
                                         Absence{"after_cleanup_without_init",
                                                 [](const auto& module) {
                                                     module.cleanup();
                                                 }},
                                         Absence{"after_the_second_cleanup",
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
