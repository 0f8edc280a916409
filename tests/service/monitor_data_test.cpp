#include "monitor/service/monitor_data.h"
#include "runtime/core.h"
#include "simulation/simulated_desktop.h"
#include "tests/fixtures/display_modes.h"
#include "tests/fixtures/recording_runtime/core_calls.h"
#include "tests/fixtures/recording_runtime/recording_runtime.h"
#include "tests/fixtures/service_members.h"
#include "tests/support/private_member.h"
#include "tests/support/simulation.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <cstddef>
#include <memory>
#include <new>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

namespace tests {

using vorlen::MonitorData;

struct WindowListField {
    using type = std::unique_ptr<WindowList> MonitorData::*;
    friend type memberOf(WindowListField);
};
template struct PrivateMember<WindowListField, &MonitorData::windowList>;

struct UseWindowListField {
    using type = bool MonitorData::*;
    friend type memberOf(UseWindowListField);
};
template struct PrivateMember<UseWindowListField, &MonitorData::useWindowList>;

struct WindowsField {
    using type = std::vector<vorlen::ui::WindowInfo> MonitorData::*;
    friend type memberOf(WindowsField);
};
template struct PrivateMember<WindowsField, &MonitorData::windows>;

namespace {

namespace ui = vorlen::ui;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;
using vorlen::VORLEN_MONITOR_INFO;
using vorlen::VorlenCore;

static_assert(!std::is_copy_constructible_v<MonitorData> &&
              !std::is_move_constructible_v<MonitorData> &&
              !std::is_copy_assignable_v<MonitorData> && !std::is_move_assignable_v<MonitorData> &&
              !std::is_polymorphic_v<MonitorData>);

template <typename Record>
constexpr bool isPlain =
    std::is_copy_constructible_v<Record>&& std::is_nothrow_move_constructible_v<Record>&&
        std::is_copy_assignable_v<Record>&& std::is_nothrow_move_assignable_v<Record> &&
    !std::is_polymorphic_v<Record>;
static_assert(isPlain<ui::MonitorInfo> && isPlain<ui::WindowInfo> && isPlain<VORLEN_MONITOR_INFO>);

// Module and runtime hand these records to each other, and may have been built apart.
constexpr std::size_t wideText = sizeof(std::wstring);
static_assert(offsetof(ui::MonitorInfo, handle) == 0);
static_assert(offsetof(ui::MonitorInfo, deviceName) == 8);
static_assert(offsetof(ui::MonitorInfo, friendlyName) == 8 + 1 * wideText);
static_assert(offsetof(ui::MonitorInfo, monitorId) == 8 + 2 * wideText);
static_assert(offsetof(ui::MonitorInfo, x) == 8 + 3 * wideText);
static_assert(offsetof(ui::MonitorInfo, y) == 8 + 3 * wideText + 4);
static_assert(offsetof(ui::MonitorInfo, width) == 8 + 3 * wideText + 8);
static_assert(offsetof(ui::MonitorInfo, height) == 8 + 3 * wideText + 12);
static_assert(offsetof(ui::MonitorInfo, refreshRate) == 8 + 3 * wideText + 16);

static_assert(offsetof(ui::WindowInfo, hwnd) == 0);
static_assert(offsetof(ui::WindowInfo, title) == 8);
static_assert(offsetof(ui::WindowInfo, className) == 8 + wideText);

constexpr std::size_t text = sizeof(std::string);
static_assert(offsetof(VORLEN_MONITOR_INFO, deviceName) == 0);
static_assert(offsetof(VORLEN_MONITOR_INFO, friendlyName) == 1 * text);
static_assert(offsetof(VORLEN_MONITOR_INFO, monitorId) == 2 * text);
static_assert(offsetof(VORLEN_MONITOR_INFO, x) == 3 * text);
static_assert(offsetof(VORLEN_MONITOR_INFO, y) == 3 * text + 4);
static_assert(offsetof(VORLEN_MONITOR_INFO, width) == 3 * text + 8);
static_assert(offsetof(VORLEN_MONITOR_INFO, height) == 3 * text + 12);
static_assert(offsetof(VORLEN_MONITOR_INFO, refreshRate) == 3 * text + 16);

HMODULE thisProgram() {
    return GetModuleHandleW(nullptr);
}

// The service's objects, linked into this program: for members that no export reaches.
class MonitorDataTest : public testing::Test {
protected:
    MonitorDataTest() {
        desktop.addMonitor(display1, L"Model A", wideMode);
        desktop.addMonitor(display2, L"Model B", smallMode);
    }

    // The core is the process's.
    ~MonitorDataTest() override {
        EXPECT_EQ(MonitorList::Get(), nullptr) << "a list was left behind";
        RecordingRuntime_Get()->resetCore();
    }

    // The first use of the lists takes thread slots, which must not be on the first test's account.
    static void SetUpTestSuite() {
        EXPECT_EQ(MonitorList::Get(), nullptr);
        EXPECT_EQ(WindowList::Get(), nullptr);
    }

    SimulatedDesktop desktop{thisProgram()};
    CoreCalls core{thisProgram(), desktop.journal};
};

// Members that only the service itself uses follow behind these.
TEST_F(MonitorDataTest, begins_with_its_fields_in_the_given_order) {
    MonitorData service;
    const auto offset = [&](const auto& field) {
        return static_cast<std::size_t>(reinterpret_cast<const char*>(&field) -
                                        reinterpret_cast<const char*>(&service));
    };
    constexpr std::size_t pointer = sizeof(void*);
    constexpr std::size_t vector = sizeof(std::vector<int>);
    EXPECT_EQ(offset(service.*memberOf(WindowListField{})), 0u);
    EXPECT_EQ(offset(monitorListOf(service)), pointer);
    EXPECT_EQ(offset(service.*memberOf(UseWindowListField{})), 2 * pointer);
    EXPECT_EQ(offset(service.*memberOf(WindowsField{})), 3 * pointer);
    EXPECT_EQ(offset(cachedMonitors(service)), 3 * pointer + vector);
    EXPECT_EQ(offset(lastMonitorUpdate(service)), 3 * pointer + 2 * vector);
}

TEST_F(MonitorDataTest, makes_a_monitor_list_without_all_displays) {
    MonitorData service;
    EXPECT_EQ(MonitorList::Get(), monitorListOf(service).get());
    EXPECT_THAT(MonitorList::Get()->GetMonitors(), SizeIs(2));
}

TEST_F(MonitorDataTest, takes_over_the_threads_monitor_list_and_destroys_it) {
    auto* const existing = new MonitorList(true);
    {
        MonitorData service;
        EXPECT_EQ(monitorListOf(service).get(), existing);
        ASSERT_THAT(service.GetMonitorList(), SizeIs(3));
        EXPECT_EQ(service.GetMonitorList()[2].handle, nullptr);
        EXPECT_EQ(service.GetMonitorList()[2].deviceName, L"All Displays");
        ASSERT_THAT(VorlenCore::Instance().GetMonitorItems(), SizeIs(3));
        EXPECT_EQ(VorlenCore::Instance().GetMonitorItems()[2].friendlyName, "All Displays");
    }
    EXPECT_EQ(MonitorList::Get(), nullptr);
}

TEST_F(MonitorDataTest, destroys_a_list_that_it_took_over_when_it_throws) {
    new MonitorList(false); // taken over by the service
    desktop.journal.at("VorlenCore::ClearMonitorList", 1, [] { throw std::bad_alloc(); });
    EXPECT_THROW(MonitorData(), std::bad_alloc);
    EXPECT_EQ(MonitorList::Get(), nullptr);
}

TEST_F(MonitorDataTest, updates_nothing_without_a_monitor_list) {
    MonitorData service;
    const auto before = lastMonitorUpdate(service);
    const std::unique_ptr<MonitorList> list = std::move(monitorListOf(service));
    desktop.clock.advance(std::chrono::seconds(1));
    desktop.journal.clear();

    service.UpdateMonitorList();
    EXPECT_THAT(desktop.journal.calls(), IsEmpty());
    EXPECT_EQ(lastMonitorUpdate(service), before);
    EXPECT_THAT(cachedMonitors(service), SizeIs(2));
    EXPECT_THAT(VorlenCore::Instance().GetMonitorItems(), SizeIs(2));
}

TEST_F(MonitorDataTest, hands_narrow_names_to_the_core_as_they_are) {
    MonitorData service;
    service.SetCurrentMonitorName("name \xE9");
    service.SetVorlenModelName("model \xE9");
    service.SetMonitorModelName(std::string("a\0b", 3));
    EXPECT_THAT(core.texts, ElementsAre("name \xE9", "model \xE9", std::string("a\0b", 3)));
    EXPECT_EQ(VorlenCore::Instance().GetMonitorName(), "name \xE9");
    EXPECT_EQ(VorlenCore::Instance().GetMonitorModelName(), std::string("a\0b", 3));
}

TEST_F(MonitorDataTest, hands_the_low_bytes_of_wide_names_to_the_core) {
    MonitorData service;
    const wchar_t* const wide = L"AB\u00E9";
    service.SetCurrentMonitorName(wide);
    service.SetVorlenModelName(wide);
    service.GetVorlenModelName(wide);
    service.GetVorlenCameraNameByVorlenModelName(wide);
    const std::string narrow = "\x41\x42\xE9";
    EXPECT_THAT(core.texts, ElementsAre(narrow, narrow, narrow, narrow));
}

TEST_F(MonitorDataTest, hands_out_the_cores_own_camera_name) {
    MonitorData service;
    core.cameraName = "camera";
    EXPECT_EQ(service.GetVorlenCameraNameByVorlenModelName("model"), core.cameraName.c_str());
    EXPECT_EQ(service.GetVorlenCameraNameByVorlenModelName(L"model"), core.cameraName.c_str());
}

TEST_F(MonitorDataTest, asks_for_the_core_in_each_call) {
    MonitorData service;
    // The call is made twice: neither may remember the core for the other.
    const auto questionsOf = [&](const auto& call) {
        desktop.journal.clear();
        call();
        call();
        const auto names = core.names();
        return std::count(names.begin(), names.end(), "Instance");
    };
    EXPECT_EQ(questionsOf([&] { service.GetCurrentMonitorName(); }), 2);
    EXPECT_EQ(questionsOf([&] { service.SetCurrentMonitorName("name"); }), 2);
    EXPECT_EQ(questionsOf([&] { service.SetCurrentMonitorName(L"name"); }), 2);
    EXPECT_EQ(questionsOf([&] { service.GetCurrentMonitorRect(); }), 2);
    EXPECT_EQ(questionsOf([&] { service.GetMonitorModelName(); }), 2);
    EXPECT_EQ(questionsOf([&] { service.SetMonitorModelName("model"); }), 2);
    EXPECT_EQ(questionsOf([&] { service.GetVorlenModelName("device"); }), 2);
    EXPECT_EQ(questionsOf([&] { service.GetVorlenModelName(L"device"); }), 2);
    EXPECT_EQ(questionsOf([&] { service.SetVorlenModelName("model"); }), 2);
    EXPECT_EQ(questionsOf([&] { service.SetVorlenModelName(L"model"); }), 2);
    EXPECT_EQ(questionsOf([&] { service.GetVorlenCameraNameByVorlenModelName("model"); }), 2);
    EXPECT_EQ(questionsOf([&] { service.GetVorlenCameraNameByVorlenModelName(L"model"); }), 2);
}

} // namespace
} // namespace tests
