#include "tools/vorlen-monitor/monitors_command.h"
#include "tools/vorlen-monitor/records.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <string_view>
#include <utility>
#include <vector>

namespace vorlen::tool {
namespace {

// Stands in for the export, with a number of monitors that can change from call to call.
std::vector<int> numbersOfMonitors;
std::size_t calls;

int changingList(MonitorListItem* items, std::int32_t capacity) {
    const std::size_t last = numbersOfMonitors.size() - 1;
    const int count = numbersOfMonitors[std::min(calls++, last)];
    if (items == nullptr) {
        return count;
    }
    const int copied = std::min(count, capacity);
    for (int i = 0; i < copied; ++i) {
        items[i] = {};
        items[i].x = i;
    }
    return copied;
}

std::vector<MonitorListItem> readWhile(std::vector<int> numbers) {
    numbersOfMonitors = std::move(numbers);
    calls = 0;
    return readRecords(changingList);
}

void fill(VLChar16 (&field)[VORLEN_MONITOR_TEXT_UNITS], std::wstring_view text) {
    std::copy(text.begin(), text.end(), std::begin(field));
}

MonitorListItem monitorLeftOfThePrimaryOne() {
    MonitorListItem monitor{};
    monitor.handle = reinterpret_cast<void*>(std::uintptr_t{0x10001});
    fill(monitor.deviceName, L"\\\\.\\DISPLAY1");
    fill(monitor.friendlyName, L"Gl\u00e4ser 3D");
    fill(monitor.monitorId, L"SN-1");
    monitor.x = -3840;
    monitor.y = -20;
    monitor.width = 3840;
    monitor.height = 2160;
    monitor.refreshRate = 59;
    return monitor;
}

TEST(ReadRecords, reads_all_of_them) {
    EXPECT_EQ(readWhile({3}).size(), 3U);
    EXPECT_EQ(readWhile({3}).back().x, 2);
    EXPECT_TRUE(readWhile({0}).empty());
}

TEST(ReadRecords, reads_again_when_more_appear_before_the_copy) {
    EXPECT_EQ(readWhile({1, 4}).size(), 4U);
    EXPECT_EQ(readWhile({0, 1, 2, 5}).size(), 5U);
}

TEST(ReadRecords, keeps_those_that_are_left_at_the_copy) {
    EXPECT_EQ(readWhile({3, 1}).size(), 1U);
    EXPECT_TRUE(readWhile({3, 0}).empty());
}

TEST(MonitorsTable, shows_every_field) {
    EXPECT_EQ(monitorsTable({monitorLeftOfThePrimaryOne()}),
              "HANDLE   DEVICE NAME   FRIENDLY NAME  MONITOR ID      X    Y  WIDTH  HEIGHT  HZ\n"
              "0x10001  \\\\.\\DISPLAY1  Gl\xc3\xa4ser 3D      SN-1        -3840  -20   3840"
              "    2160  59\n");
}

TEST(MonitorsTable, is_a_sentence_without_monitors) {
    EXPECT_EQ(monitorsTable({}), "The desktop has no monitor.\n");
}

TEST(MonitorsJson, holds_every_field_in_the_order_of_the_record) {
    EXPECT_EQ(monitorsJson({monitorLeftOfThePrimaryOne()}).dump(),
              "[{\"handle\":\"0x10001\",\"deviceName\":\"\\\\\\\\.\\\\DISPLAY1\","
              "\"friendlyName\":\"Gl\xc3\xa4ser 3D\",\"monitorId\":\"SN-1\","
              "\"x\":-3840,\"y\":-20,\"width\":3840,\"height\":2160,\"refreshRate\":59}]");
}

TEST(MonitorsJson, keeps_the_order_of_the_monitors) {
    const auto json = monitorsJson(readWhile({3}));
    ASSERT_EQ(json.size(), 3U);
    EXPECT_EQ(json[0]["x"], 0);
    EXPECT_EQ(json[2]["x"], 2);
    EXPECT_EQ(monitorsJson({}).dump(), "[]");
}

TEST(MonitorsJson, holds_all_bits_of_a_handle) {
    MonitorListItem monitor{};
    EXPECT_EQ(monitorsJson({monitor})[0]["handle"], "0x0");
    monitor.handle = reinterpret_cast<void*>(std::uintptr_t{0xFEDCBA9876543210});
    EXPECT_EQ(monitorsJson({monitor})[0]["handle"], "0xfedcba9876543210");
}

} // namespace
} // namespace vorlen::tool
