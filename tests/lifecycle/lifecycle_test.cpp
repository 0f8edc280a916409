#include "tests/fixtures/module_test.h"

#include <gmock/gmock.h>

#include <thread>

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

TEST_F(Lifecycle, of_a_service_starts_with_one_reading_of_the_desktop) {
    module.init();
    EXPECT_NE(service(), nullptr);
    EXPECT_EQ(desktop.journal.count("EnumDisplayMonitors"), 1u);
    EXPECT_EQ(desktop.journal.count("EnumWindows"), 1u);
    EXPECT_EQ(module.runtime.monitorItems().size(), 2u);
    desktop.journal.clear();
    EXPECT_EQ(module.exports->getMonitorList(nullptr, 0), 2);
    EXPECT_THAT(desktop.displayCalls(), IsEmpty());
}

TEST_F(Lifecycle, of_a_service_starts_with_the_windows_and_then_the_monitors) {
    module.init();
    EXPECT_THAT(desktop.journal.calls({"EnumWindows", "SetWinEventHook", "EnumDisplayMonitors",
                                       "VorlenCore::ClearMonitorList"}),
                ElementsAre("EnumWindows", "SetWinEventHook", "EnumDisplayMonitors",
                            "VorlenCore::ClearMonitorList"));
}

TEST_F(Lifecycle, is_not_touched_by_a_second_init) {
    module.init();
    auto* const first = service();
    const auto* const monitors = module.monitorWrapper().getMonitorList().data();
    desktop.journal.clear();
    module.init();
    EXPECT_EQ(service(), first);
    EXPECT_EQ(module.monitorWrapper().getMonitorList().data(), monitors);
    EXPECT_THAT(desktop.displayCalls(), IsEmpty());
    EXPECT_THAT(desktop.windowCalls(), IsEmpty());
    EXPECT_THAT(core.names(), IsEmpty());
}

TEST_F(Lifecycle, ends_with_cleanup) {
    module.init();
    module.cleanup();
    EXPECT_EQ(service(), nullptr);
    EXPECT_EQ(module.windowEnumWrapper().getMonitorHandle(0), nullptr);
    EXPECT_EQ(desktop.journal.count("UnhookWinEvent"), 1u);
}

TEST_F(Lifecycle, is_not_shortened_by_cleanups_too_many) {
    module.cleanup();
    module.init();
    module.cleanup();
    module.cleanup();
    EXPECT_EQ(desktop.journal.count("UnhookWinEvent"), 1u);
    EXPECT_EQ(service(), nullptr);
}

TEST_F(Lifecycle, shows_no_service_while_it_is_being_destroyed) {
    module.init();
    auto* seen = service();
    int listed = -1;
    desktop.journal.at("UnhookWinEvent", 1, [&] {
        seen = service();
        listed = module.exports->getMonitorList(nullptr, 0);
    });
    module.cleanup();
    EXPECT_EQ(seen, nullptr);
    EXPECT_EQ(listed, 0);
}

TEST_F(Lifecycle, ends_with_the_monitors_before_the_windows) {
    module.init();
    const HMONITOR listed = module.windowEnumWrapper().getMonitorHandle(0);
    EXPECT_NE(listed, nullptr);
    HMONITOR seen = listed;
    desktop.journal.at("UnhookWinEvent", 1,
                       [&] { seen = module.windowEnumWrapper().getMonitorHandle(0); });
    module.cleanup();
    EXPECT_EQ(seen, nullptr);
}

// The library is told of each of them.
TEST_F(Lifecycle, is_not_touched_by_threads_that_come_and_go) {
    module.init();
    auto* const before = service();
    desktop.journal.clear();
    for (int i = 0; i < 10; ++i) {
        std::thread([] {}).join();
    }
    EXPECT_THAT(desktop.journal.calls(), IsEmpty());
    EXPECT_EQ(service(), before);
    EXPECT_NE(module.windowEnumWrapper().getMonitorHandle(0), nullptr);
    EXPECT_EQ(desktop.eventHooks.installed(), 1u);
}

TEST_F(Lifecycle, can_start_again_with_what_the_desktop_shows_then) {
    module.init();
    module.cleanup();
    desktop.monitors.all.pop_back();
    module.init();
    EXPECT_EQ(module.exports->getMonitorList(nullptr, 0), 1);
    EXPECT_NE(module.windowEnumWrapper().getMonitorHandle(0), nullptr);
}

TEST_F(Lifecycle, leaves_the_cores_names_alone) {
    module.runtime.setMonitorName("name");
    module.runtime.setMonitorModelName("model");
    module.init();
    module.cleanup();
    EXPECT_EQ(module.runtime.monitorName(), "name");
    EXPECT_EQ(module.runtime.monitorModelName(), "model");
}

} // namespace
} // namespace tests
