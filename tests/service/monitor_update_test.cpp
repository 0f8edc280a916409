#include "tests/support/allocations.h"
#include "tests/fixtures/module_test.h"
#include "tests/fixtures/service_members.h"

#include <gmock/gmock.h>

#include <new>
#include <stdexcept>

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

TEST_F(MonitorUpdate, gives_the_cache_and_the_core_the_same_monitors_in_the_systems_order) {
    update();
    EXPECT_THAT(cachedNames(), ElementsAre(display2, display1, display3));
    EXPECT_THAT(namesInCore(),
                ElementsAre(R"(\\.\DISPLAY2)", R"(\\.\DISPLAY1)", R"(\\.\DISPLAY3)"));
}

TEST_F(MonitorUpdate, replaces_what_the_cache_and_the_core_held) {
    desktop.monitors.all.erase(desktop.monitors.all.begin());
    update();
    EXPECT_THAT(cachedNames(), ElementsAre(display1, display3));
    EXPECT_THAT(namesInCore(), ElementsAre(R"(\\.\DISPLAY1)", R"(\\.\DISPLAY3)"));
}

TEST_F(MonitorUpdate, clears_the_core_and_then_adds_asking_for_the_core_each_time) {
    update();
    EXPECT_THAT(core.names(),
                ElementsAre("Instance", "ClearMonitorList", "Instance", "AddMonitorItem",
                            "Instance", "AddMonitorItem", "Instance", "AddMonitorItem"));
}

TEST_F(MonitorUpdate, reads_the_desktop_before_it_clears_the_core_and_the_time_last) {
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

TEST_F(MonitorUpdate, without_any_monitor_empties_the_cache_and_the_core_and_notes_the_time) {
    const auto before = lastUpdate();
    desktop.monitors.all.clear();
    desktop.clock.advance(3s);
    update();
    EXPECT_THAT(core.names(), ElementsAre("Instance", "ClearMonitorList"));
    EXPECT_THAT(module.runtime.monitorItems(), IsEmpty());
    EXPECT_THAT(cachedNames(), IsEmpty());
    EXPECT_EQ(lastUpdate() - before, 3s);
}

TEST_F(MonitorUpdate, keeps_the_room_of_the_list_that_it_replaces) {
    desktop.monitors.all.clear();
    update();
    EXPECT_GE(cachedMonitors(service()).capacity(), 3u);
}

TEST_F(MonitorUpdate, hands_the_low_byte_of_each_unit_to_the_core_and_keeps_the_cache_wide) {
    const std::wstring name = L"A\u00E9\u3042\u0100Z";
    desktop.displayPaths.all[0].friendlyName = name;
    update();
    EXPECT_EQ(module.runtime.monitorItems()[0].friendlyName, std::string("A\xE9\x42\0Z", 5));
    EXPECT_EQ(cachedMonitors(service())[0].friendlyName, name);
}

TEST_F(MonitorUpdate, narrows_device_names_in_the_same_way) {
    desktop.monitors.all[0].deviceName = L"\u00E9\u3042";
    update();
    EXPECT_EQ(module.runtime.monitorItems()[0].deviceName, "\xE9\x42");
}

TEST_F(MonitorUpdate, keeps_numbers_below_zero) {
    update();
    EXPECT_EQ(module.runtime.monitorItems()[0].x, -1920);
    EXPECT_EQ(cachedMonitors(service())[0].x, -1920);
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

class AbandonedUpdate : public MonitorUpdate {};

TEST_F(AbandonedUpdate, lets_the_runtimes_exception_pass) {
    desktop.journal.at("VorlenCore::AddMonitorItem", 2,
                       [] { throw std::runtime_error("refused by the runtime"); });
    try {
        update();
        ADD_FAILURE() << "nothing was thrown";
    } catch (const std::runtime_error& error) {
        EXPECT_STREQ(error.what(), "refused by the runtime");
    }
}

TEST_F(AbandonedUpdate, keeps_what_was_appended_and_the_old_time) {
    const auto before = lastUpdate();
    desktop.clock.advance(1s);
    desktop.journal.at("VorlenCore::AddMonitorItem", 2, [] { throw std::bad_alloc(); });
    EXPECT_THROW(update(), std::bad_alloc);
    EXPECT_THAT(cachedNames(), ElementsAre(display2, display1));
    EXPECT_THAT(namesInCore(), ElementsAre(R"(\\.\DISPLAY2)"));
    EXPECT_EQ(lastUpdate(), before);
}

TEST_F(AbandonedUpdate, is_made_good_by_the_next_question) {
    desktop.clock.advance(1s);
    desktop.journal.at("VorlenCore::AddMonitorItem", 2, [] { throw std::bad_alloc(); });
    EXPECT_THROW(module.exports->getMonitorList(nullptr, 0), std::bad_alloc);
    EXPECT_EQ(module.exports->getMonitorList(nullptr, 0), 3);
    EXPECT_THAT(namesInCore(), SizeIs(3));
}

TEST_F(AbandonedUpdate, is_made_good_by_the_next_question_however_young_the_last_update_is) {
    desktop.journal.at("VorlenCore::AddMonitorItem", 2, [] { throw std::bad_alloc(); });
    EXPECT_THROW(update(), std::bad_alloc);
    EXPECT_EQ(module.exports->getMonitorList(nullptr, 0), 3);
    desktop.journal.clear();
    EXPECT_EQ(module.exports->getMonitorList(nullptr, 0), 3);
    EXPECT_THAT(desktop.displayCalls(), IsEmpty()) << "the completed update counts again";
}

TEST_F(AbandonedUpdate, of_an_enumeration_that_fails_is_made_good_likewise) {
    desktop.monitors.all.pop_back();
    desktop.journal.at("GetMonitorInfoW", 1, [] { throw std::bad_alloc(); });
    EXPECT_THROW(update(), std::bad_alloc);
    EXPECT_EQ(module.exports->getMonitorList(nullptr, 0), 2);
}

TEST_F(AbandonedUpdate, of_an_enumeration_that_fails_keeps_cache_core_and_time_as_they_were) {
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

TEST_F(AbandonedUpdate, leaves_the_cache_empty_when_the_core_cannot_be_cleared) {
    const auto before = lastUpdate();
    desktop.clock.advance(1s);
    desktop.journal.at("VorlenCore::ClearMonitorList", 1, [] { throw std::bad_alloc(); });
    EXPECT_THROW(update(), std::bad_alloc);
    EXPECT_THAT(cachedNames(), IsEmpty());
    EXPECT_EQ(lastUpdate(), before);
}

} // namespace
} // namespace tests
