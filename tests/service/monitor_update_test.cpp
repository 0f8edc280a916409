#include "tests/fixtures/module_test.h"
#include "tests/fixtures/service_members.h"
#include "tests/support/allocations.h"

#include <gmock/gmock.h>

#include <new>
#include <string>

namespace tests {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;
using namespace std::chrono_literals;

class MonitorUpdate : public RunningModuleTest {
protected:
    void update() const { module.exports->updateMonitorList(); }

    std::vector<std::wstring> cachedNames() const {
        std::vector<std::wstring> names;
        for (const auto& monitor : cachedMonitors(service())) {
            names.push_back(monitor.deviceName);
        }
        return names;
    }

    std::vector<std::string> namesInCore() const {
        std::vector<std::string> names;
        for (const auto& monitor : module.runtime.monitorItems()) {
            names.push_back(monitor.deviceName);
        }
        return names;
    }

    auto lastUpdate() const { return lastMonitorUpdate(service()); }
};

TEST_F(MonitorUpdate, hands_every_field_of_a_monitor_to_the_core) {
    update();
    ASSERT_THAT(module.runtime.monitorItems(), SizeIs(3));
    const vorlen::VORLEN_MONITOR_INFO& monitor = module.runtime.monitorItems()[1];
    EXPECT_EQ(monitor.deviceName, R"(\\.\DISPLAY1)");
    EXPECT_EQ(monitor.friendlyName, "Model A");
    EXPECT_EQ(monitor.monitorId, "");
    EXPECT_EQ(monitor.x, 0);
    EXPECT_EQ(monitor.y, -200);
    EXPECT_EQ(monitor.width, 3840);
    EXPECT_EQ(monitor.height, 2160);
    EXPECT_EQ(monitor.refreshRate, 60);
}

TEST_F(MonitorUpdate, gives_cache_and_core_the_monitors_in_the_systems_order) {
    update();
    EXPECT_THAT(cachedNames(), ElementsAre(display2, display1, display3));
    EXPECT_THAT(namesInCore(),
                ElementsAre(R"(\\.\DISPLAY2)", R"(\\.\DISPLAY1)", R"(\\.\DISPLAY3)"));
    desktop.monitors.all.erase(desktop.monitors.all.begin());
    update();
    EXPECT_THAT(cachedNames(), ElementsAre(display1, display3));
    EXPECT_THAT(namesInCore(), ElementsAre(R"(\\.\DISPLAY1)", R"(\\.\DISPLAY3)"));
}

TEST_F(MonitorUpdate, costs_a_fixed_number_of_platform_calls) {
    desktop.displayPaths.add(LR"(\\.\DISPLAY4)", L"D", L"d");
    update();
    EXPECT_EQ(desktop.journal.count("EnumDisplayMonitors"), 1u);
    EXPECT_EQ(desktop.journal.count("GetMonitorInfoW"), 3u);
    EXPECT_EQ(desktop.journal.count("EnumDisplaySettingsW"), 3u);
    EXPECT_EQ(desktop.journal.count("GetDisplayConfigBufferSizes"), 1u);
    EXPECT_EQ(desktop.journal.count("QueryDisplayConfig"), 1u);
    EXPECT_EQ(desktop.journal.count("DisplayConfigGetDeviceInfo"), 8u);
    EXPECT_THAT(desktop.windowCalls(), IsEmpty());
}

// Promise (getMonitorList): `updateMonitorList` reads the monitors at once, however young the list
// is, and makes it fresh for another 500 ms.
TEST_F(MonitorUpdate, makes_the_list_fresh_for_half_a_second) {
    desktop.clock.advance(400ms);
    update();
    update();
    EXPECT_EQ(desktop.journal.count("EnumDisplayMonitors"), 2u);
    desktop.journal.clear();
    desktop.clock.advance(499ms);
    EXPECT_EQ(module.exports->getMonitorList(nullptr, 0), 3);
    EXPECT_THAT(desktop.displayCalls(), IsEmpty());
}

TEST_F(MonitorUpdate, asks_for_the_core_before_each_of_its_calls) {
    update();
    EXPECT_THAT(core.names(),
                ElementsAre("Instance", "ClearMonitorList", "Instance", "AddMonitorItem",
                            "Instance", "AddMonitorItem", "Instance", "AddMonitorItem"));
}

TEST_F(MonitorUpdate, reads_the_desktop_first_and_the_time_last) {
    update();
    const auto order =
        desktop.journal.calls({"EnumDisplayMonitors", "QueryDisplayConfig", "EnumDisplaySettingsW",
                               "VorlenCore::ClearMonitorList"});
    EXPECT_THAT(order, ElementsAre("EnumDisplayMonitors", "QueryDisplayConfig",
                                   "EnumDisplaySettingsW", "EnumDisplaySettingsW",
                                   "EnumDisplaySettingsW", "VorlenCore::ClearMonitorList"));
    EXPECT_EQ(desktop.journal.calls().back(), "QueryPerformanceCounter");
    EXPECT_EQ(desktop.journal.count("QueryPerformanceCounter"), 1u);
}

TEST_F(MonitorUpdate, empties_cache_and_core_when_there_is_no_monitor) {
    const auto before = lastUpdate();
    desktop.monitors.all.clear();
    desktop.clock.advance(3s);
    update();
    EXPECT_THAT(core.names(), ElementsAre("Instance", "ClearMonitorList"));
    EXPECT_THAT(module.runtime.monitorItems(), IsEmpty());
    EXPECT_THAT(cachedNames(), IsEmpty());
    EXPECT_EQ(lastUpdate() - before, 3s);
}

TEST_F(MonitorUpdate, hands_the_low_byte_of_each_unit_to_the_core) {
    const std::wstring name = L"A\u00E9\u3042\u0100Z";
    desktop.displayPaths.all[0].friendlyName = name;
    desktop.monitors.all[1].deviceName = L"\u00E9\u3042";
    update();
    EXPECT_EQ(module.runtime.monitorItems()[0].friendlyName, std::string("A\xE9\x42\0Z", 5));
    EXPECT_EQ(module.runtime.monitorItems()[1].deviceName, "\xE9\x42");
    EXPECT_EQ(cachedMonitors(service())[0].friendlyName, name);
}

// The names need memory of their own as they are narrowed.
TEST_F(MonitorUpdate, narrows_a_monitors_texts_before_it_asks_for_the_core) {
    desktop.displayPaths.all[0].friendlyName = std::wstring(100, L'n');
    std::size_t failures = 0;
    for (bool failed = true; failed; ++failures) {
        desktop.journal.clear();
        Allocations allocations({module.image()});
        allocations.failRequest(failures + 1);
        try {
            update();
        } catch (const std::bad_alloc&) {
        }
        failed = allocations.hasFailed();
        const std::size_t answered = desktop.journal.count("VorlenCore::ClearMonitorList") +
                                     desktop.journal.count("VorlenCore::AddMonitorItem");
        EXPECT_EQ(desktop.journal.count("VorlenCore::Instance"), answered)
            << "request " << failures + 1;
    }
    EXPECT_GT(failures, 10u);
}

// Promise (getMonitorList): An exception of the runtime ends an update with the monitors handed
// over so far. The next question reads them again, however young the list is.
TEST_F(MonitorUpdate, keeps_what_was_handed_over_when_the_core_throws) {
    const auto before = lastUpdate();
    desktop.clock.advance(100ms);
    desktop.journal.at("VorlenCore::AddMonitorItem", 2, [] { throw std::bad_alloc(); });
    EXPECT_THROW(update(), std::bad_alloc);
    EXPECT_THAT(cachedNames(), ElementsAre(display2, display1));
    EXPECT_THAT(namesInCore(), ElementsAre(R"(\\.\DISPLAY2)"));
    EXPECT_EQ(lastUpdate(), before);

    EXPECT_EQ(module.exports->getMonitorList(nullptr, 0), 3);
    desktop.journal.clear();
    EXPECT_EQ(module.exports->getMonitorList(nullptr, 0), 3);
    EXPECT_THAT(desktop.displayCalls(), IsEmpty()) << "the completed update counts again";
}

TEST_F(MonitorUpdate, leaves_the_cache_empty_when_the_core_cannot_be_cleared) {
    const auto before = lastUpdate();
    desktop.clock.advance(1s);
    desktop.journal.at("VorlenCore::ClearMonitorList", 1, [] { throw std::bad_alloc(); });
    EXPECT_THROW(update(), std::bad_alloc);
    EXPECT_THAT(cachedNames(), IsEmpty());
    EXPECT_EQ(lastUpdate(), before);
}

TEST_F(MonitorUpdate, changes_nothing_when_the_desktop_cannot_be_read) {
    const auto before = lastUpdate();
    desktop.monitors.all.pop_back();
    desktop.clock.advance(1s);
    desktop.journal.at("GetMonitorInfoW", 2, [] { throw std::bad_alloc(); });
    EXPECT_THROW(update(), std::bad_alloc);
    EXPECT_THAT(core.names(), IsEmpty());
    EXPECT_THAT(cachedNames(), ElementsAre(display2, display1, display3));
    EXPECT_THAT(namesInCore(), SizeIs(3));
    EXPECT_NE(module.windowEnumWrapper().getMonitorHandle(2), nullptr);
    EXPECT_EQ(lastUpdate(), before);
}

} // namespace
} // namespace tests
