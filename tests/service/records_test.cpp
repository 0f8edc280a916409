#include "monitor/service/monitor_data.h"
#include "monitor/service/ui_records.h"
#include "runtime/core.h"
#include "simulation/simulated_desktop.h"
#include "tests/support/private_member.h"
#include "tests/support/simulation.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cstddef>
#include <memory>
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

struct MonitorListField {
    using type = std::unique_ptr<MonitorList> MonitorData::*;
    friend type memberOf(MonitorListField);
};
template struct PrivateMember<MonitorListField, &MonitorData::monitorList>;

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

struct MonitorsField {
    using type = std::vector<vorlen::ui::MonitorInfo> MonitorData::*;
    friend type memberOf(MonitorsField);
};
template struct PrivateMember<MonitorsField, &MonitorData::monitors>;

struct LastMonitorUpdateField {
    using type = std::chrono::steady_clock::time_point MonitorData::*;
    friend type memberOf(LastMonitorUpdateField);
};
template struct PrivateMember<LastMonitorUpdateField, &MonitorData::lastMonitorUpdate>;

namespace {

using vorlen::VORLEN_MONITOR_INFO;
namespace ui = vorlen::ui;

template <typename Record>
constexpr bool isPlain =
    std::is_copy_constructible_v<Record>&& std::is_nothrow_move_constructible_v<Record>&&
        std::is_copy_assignable_v<Record>&& std::is_nothrow_move_assignable_v<Record> &&
    !std::is_polymorphic_v<Record>;

TEST(Records, are_copied_and_moved_field_by_field) {
    EXPECT_TRUE(isPlain<ui::MonitorInfo>);
    EXPECT_TRUE(isPlain<ui::WindowInfo>);
    EXPECT_TRUE(isPlain<VORLEN_MONITOR_INFO>);

    ui::MonitorInfo monitor{nullptr, L"device", L"friendly", L"id", -1, 2, 3, 4, 5};
    const ui::MonitorInfo copy = monitor;
    const ui::MonitorInfo moved = std::move(monitor);
    for (const ui::MonitorInfo* const same : {&copy, &moved}) {
        EXPECT_EQ(same->deviceName + same->friendlyName + same->monitorId, L"devicefriendlyid");
        EXPECT_EQ(same->x, -1);
        EXPECT_EQ(same->y, 2);
        EXPECT_EQ(same->width, 3);
        EXPECT_EQ(same->height, 4);
        EXPECT_EQ(same->refreshRate, 5);
    }
}

TEST(OneService, stays_at_its_place_and_has_no_virtual_functions) {
    EXPECT_FALSE(std::is_copy_constructible_v<MonitorData>);
    EXPECT_FALSE(std::is_move_constructible_v<MonitorData>);
    EXPECT_FALSE(std::is_copy_assignable_v<MonitorData>);
    EXPECT_FALSE(std::is_move_assignable_v<MonitorData>);
    EXPECT_FALSE(std::is_polymorphic_v<MonitorData>);
}

class LayoutOfService : public testing::Test {
protected:
    template <typename Field>
    std::size_t offset(Field MonitorData::*field) const {
        return static_cast<std::size_t>(reinterpret_cast<const char*>(&(service.*field)) -
                                        reinterpret_cast<const char*>(&service));
    }

private:
    SimulatedDesktop desktop{GetModuleHandleW(nullptr)};
    const MonitorData service;
};

// Members that only the service itself uses follow behind these.
TEST_F(LayoutOfService, begins_with_its_fields_in_the_given_order) {
    constexpr std::size_t pointer = sizeof(void*);
    constexpr std::size_t vector = sizeof(std::vector<int>);
    EXPECT_EQ(offset(memberOf(WindowListField{})), 0u);
    EXPECT_EQ(offset(memberOf(MonitorListField{})), pointer);
    EXPECT_EQ(offset(memberOf(UseWindowListField{})), 2 * pointer);
    EXPECT_EQ(offset(memberOf(WindowsField{})), 3 * pointer);
    EXPECT_EQ(offset(memberOf(MonitorsField{})), 3 * pointer + vector);
    EXPECT_EQ(offset(memberOf(LastMonitorUpdateField{})), 3 * pointer + 2 * vector);
}

// Module and runtime hand these records to each other, and may have been built apart.

TEST(CachedMonitor, has_its_fields_in_the_order_that_the_runtime_reads_them_in) {
    constexpr std::size_t text = sizeof(std::wstring);
    EXPECT_EQ(offsetof(ui::MonitorInfo, handle), 0u);
    EXPECT_EQ(offsetof(ui::MonitorInfo, deviceName), 8u);
    EXPECT_EQ(offsetof(ui::MonitorInfo, friendlyName), 8 + 1 * text);
    EXPECT_EQ(offsetof(ui::MonitorInfo, monitorId), 8 + 2 * text);
    EXPECT_EQ(offsetof(ui::MonitorInfo, x), 8 + 3 * text);
    EXPECT_EQ(offsetof(ui::MonitorInfo, y), 8 + 3 * text + 4);
    EXPECT_EQ(offsetof(ui::MonitorInfo, width), 8 + 3 * text + 8);
    EXPECT_EQ(offsetof(ui::MonitorInfo, height), 8 + 3 * text + 12);
    EXPECT_EQ(offsetof(ui::MonitorInfo, refreshRate), 8 + 3 * text + 16);
}

TEST(CachedWindow, has_its_fields_in_the_order_that_the_runtime_reads_them_in) {
    EXPECT_EQ(offsetof(ui::WindowInfo, hwnd), 0u);
    EXPECT_EQ(offsetof(ui::WindowInfo, title), 8u);
    EXPECT_EQ(offsetof(ui::WindowInfo, className), 8 + sizeof(std::wstring));
}

TEST(RuntimesMonitor, has_its_fields_in_the_order_that_the_core_reads_them_in) {
    constexpr std::size_t text = sizeof(std::string);
    EXPECT_EQ(offsetof(VORLEN_MONITOR_INFO, deviceName), 0u);
    EXPECT_EQ(offsetof(VORLEN_MONITOR_INFO, friendlyName), 1 * text);
    EXPECT_EQ(offsetof(VORLEN_MONITOR_INFO, monitorId), 2 * text);
    EXPECT_EQ(offsetof(VORLEN_MONITOR_INFO, x), 3 * text);
    EXPECT_EQ(offsetof(VORLEN_MONITOR_INFO, y), 3 * text + 4);
    EXPECT_EQ(offsetof(VORLEN_MONITOR_INFO, width), 3 * text + 8);
    EXPECT_EQ(offsetof(VORLEN_MONITOR_INFO, height), 3 * text + 12);
    EXPECT_EQ(offsetof(VORLEN_MONITOR_INFO, refreshRate), 3 * text + 16);
}

TEST(Records, have_empty_texts_at_first) {
    const ui::MonitorInfo monitor;
    EXPECT_EQ(monitor.deviceName + monitor.friendlyName + monitor.monitorId, L"");
    const ui::WindowInfo window;
    EXPECT_EQ(window.title + window.className, L"");
    const VORLEN_MONITOR_INFO handedOver;
    EXPECT_EQ(handedOver.deviceName + handedOver.friendlyName + handedOver.monitorId, "");
}

} // namespace
} // namespace tests
