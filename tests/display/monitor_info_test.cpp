#include "monitor/display/monitor_info.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <utility>

namespace tests {
namespace {

const auto anyHandle = reinterpret_cast<HMONITOR>(0x1234);

TEST(MonitorRecord, is_empty_at_first) {
    const MonitorInfo info;
    EXPECT_EQ(info.hMonitor, nullptr);
    for (const auto* text : {&info.deviceName, &info.friendlyName, &info.devicePath,
                             &info.monitorId, &info.reservedText}) {
        EXPECT_EQ(*text, L"");
    }
    for (const auto number : {info.x, info.y, info.width, info.height, info.refreshRate}) {
        EXPECT_EQ(number, 0);
    }
}

TEST(MonitorRecord, with_a_name_has_it_as_both_of_its_names) {
    const MonitorInfo info(anyHandle, L"name");
    EXPECT_EQ(info.hMonitor, anyHandle);
    EXPECT_EQ(info.deviceName, L"name");
    EXPECT_EQ(info.friendlyName, L"name");
    EXPECT_EQ(info.devicePath, L"");
    EXPECT_EQ(info.monitorId, L"");
    EXPECT_EQ(info.reservedText, L"");
    EXPECT_EQ(info.refreshRate, 0);
}

TEST(MonitorRecord, is_moved_with_every_field_and_leaves_no_text_behind) {
    MonitorInfo from(anyHandle, L"name");
    from.devicePath = L"path";
    from.monitorId = L"id";
    from.reservedText = L"reserved";
    from.x = 1;
    from.y = 2;
    from.width = 3;
    from.height = 4;
    from.refreshRate = 5;

    const MonitorInfo to = std::move(from);
    EXPECT_EQ(to.hMonitor, anyHandle);
    EXPECT_EQ(to.deviceName, L"name");
    EXPECT_EQ(to.friendlyName, L"name");
    EXPECT_EQ(to.devicePath, L"path");
    EXPECT_EQ(to.monitorId, L"id");
    EXPECT_EQ(to.reservedText, L"reserved");
    EXPECT_EQ(to.x, 1);
    EXPECT_EQ(to.y, 2);
    EXPECT_EQ(to.width, 3);
    EXPECT_EQ(to.height, 4);
    EXPECT_EQ(to.refreshRate, 5);
    // The moved-from record is looked at on purpose: its holder relies on it.
    for (const auto* text : {&from.deviceName, &from.friendlyName, &from.devicePath,
                             &from.monitorId, &from.reservedText}) {
        EXPECT_EQ(*text, L""); // NOLINT(bugprone-use-after-move)
    }
}

TEST(MonitorRecord, has_its_fields_in_the_order_that_exported_functions_pass_it_in) {
    EXPECT_EQ(offsetof(MonitorInfo, hMonitor), 0u);
    EXPECT_EQ(offsetof(MonitorInfo, deviceName), 8u);
    EXPECT_EQ(offsetof(MonitorInfo, friendlyName), 8 + 1 * sizeof(std::wstring));
    EXPECT_EQ(offsetof(MonitorInfo, devicePath), 8 + 2 * sizeof(std::wstring));
    EXPECT_EQ(offsetof(MonitorInfo, monitorId), 8 + 3 * sizeof(std::wstring));
    EXPECT_EQ(offsetof(MonitorInfo, reservedText), 8 + 4 * sizeof(std::wstring));
    EXPECT_EQ(offsetof(MonitorInfo, x), 8 + 5 * sizeof(std::wstring));
    EXPECT_EQ(offsetof(MonitorInfo, refreshRate), 8 + 5 * sizeof(std::wstring) + 16);
}

} // namespace
} // namespace tests
