#include "tests/fixtures/module_test.h"

#include <gmock/gmock.h>

namespace tests {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class Lifecycle : public ModuleTest {
protected:
    void SetUp() override {
        desktop.addMonitor(display1, L"Model A", wideMode);
        desktop.addMonitor(display2, L"Model B", smallMode);
    }

    vorlen::MonitorData* service() const { return module.exports->getMonitorData(); }
};

TEST_F(Lifecycle, begins_with_one_reading_of_windows_and_monitors) {
    module.init();
    EXPECT_NE(service(), nullptr);
    EXPECT_THAT(desktop.journal.calls({"EnumWindows", "SetWinEventHook", "EnumDisplayMonitors",
                                       "VorlenCore::ClearMonitorList"}),
                ElementsAre("EnumWindows", "SetWinEventHook", "EnumDisplayMonitors",
                            "VorlenCore::ClearMonitorList"));
    EXPECT_EQ(module.runtime.monitorItems().size(), 2u);
    desktop.journal.clear();
    EXPECT_EQ(module.exports->getMonitorList(nullptr, 0), 2);
    EXPECT_THAT(desktop.displayCalls(), IsEmpty());
}

TEST_F(Lifecycle, keeps_the_service_at_a_second_init) {
    module.init();
    auto* const first = service();
    const auto* const monitors = module.monitorWrapper().getMonitorList().data();
    desktop.journal.clear();
    module.init();
    EXPECT_THAT(desktop.journal.calls(), IsEmpty());
    EXPECT_EQ(service(), first);
    EXPECT_EQ(module.monitorWrapper().getMonitorList().data(), monitors);
}

TEST_F(Lifecycle, ends_with_the_first_cleanup) {
    module.cleanup();
    module.init();
    module.cleanup();
    EXPECT_EQ(service(), nullptr);
    EXPECT_EQ(module.windowEnumWrapper().getMonitorHandle(0), nullptr);
    module.cleanup();
    EXPECT_EQ(desktop.journal.count("UnhookWinEvent"), 1u);
}

TEST_F(Lifecycle, shows_no_service_while_it_is_being_destroyed) {
    module.init();
    auto* seen = service();
    int listed = -1;
    HMONITOR monitor = module.windowEnumWrapper().getMonitorHandle(0);
    EXPECT_NE(monitor, nullptr);
    desktop.journal.at("UnhookWinEvent", 1, [&] {
        seen = service();
        listed = module.exports->getMonitorList(nullptr, 0);
        monitor = module.windowEnumWrapper().getMonitorHandle(0);
    });
    module.cleanup();
    EXPECT_EQ(seen, nullptr);
    EXPECT_EQ(listed, 0);
    EXPECT_EQ(monitor, nullptr) << "the monitor list is destroyed before the window list";
}

TEST_F(Lifecycle, begins_again_with_what_the_desktop_shows_then) {
    module.init();
    module.cleanup();
    desktop.monitors.all.pop_back();
    module.init();
    EXPECT_EQ(module.exports->getMonitorList(nullptr, 0), 1);
    EXPECT_NE(module.windowEnumWrapper().getMonitorHandle(0), nullptr);
}

TEST_F(Lifecycle, leaves_the_names_of_the_core_alone) {
    module.runtime.setMonitorName("name");
    module.runtime.setMonitorModelName("model");
    module.init();
    module.cleanup();
    EXPECT_EQ(module.runtime.monitorName(), "name");
    EXPECT_EQ(module.runtime.monitorModelName(), "model");
}

} // namespace
} // namespace tests
