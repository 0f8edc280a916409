#include "tests/exports/extremes.h"
#include "tests/fixtures/module_test.h"
#include "tests/fixtures/service_members.h"

#include <algorithm>
#include <array>
#include <cstring>

namespace tests {
namespace {

// The caller's array, full of a byte that the library never writes by chance. The list of windows
// is copied by the same template: WindowListExport shows only that it is used.
class MonitorListExport : public RunningModuleTest {
protected:
    MonitorListExport() { reset(); }

    void reset() { std::memset(items.data(), untouched, sizeof(items)); }

    int copy(std::int32_t capacity) {
        return module.exports->getMonitorList(items.data(), capacity);
    }

    // Whether the records from this one on are as they were.
    bool isUntouchedFrom(std::size_t record) const {
        return areUntouched(items.data() + record, items.data() + items.size());
    }

    static bool areUntouched(const void* from, const void* to) {
        return std::all_of(static_cast<const unsigned char*>(from),
                           static_cast<const unsigned char*>(to),
                           [](unsigned char byte) { return byte == untouched; });
    }

    static constexpr unsigned char untouched = 0xC5;
    std::array<MonitorListItem, 4> items;
};

// Promise (getMonitorList): Without an array (`items` is null) it returns the number of monitors,
// whatever `capacity` is. `getWindowList` does the same with windows.
TEST_F(MonitorListExport, returns_the_number_of_monitors_without_an_array) {
    for (const std::int32_t capacity : {0, 1, 3, 100, -3, smallest, largest}) {
        EXPECT_EQ(module.exports->getMonitorList(nullptr, capacity), 3) << capacity;
    }
}

// Promise (getMonitorList): With an array, a `capacity` of 0 or less is returned unchanged and
// nothing is written. `getWindowList` does the same.
TEST_F(MonitorListExport, returns_a_capacity_of_0_or_less_and_writes_nothing) {
    for (const std::int32_t capacity : {0, -1, -3, smallest}) {
        EXPECT_EQ(copy(capacity), capacity);
        EXPECT_TRUE(isUntouchedFrom(0));
    }
}

TEST_F(MonitorListExport, writes_the_first_monitors_that_fit) {
    EXPECT_EQ(copy(2), 2);
    EXPECT_STREQ(items[0].deviceName, display2);
    EXPECT_STREQ(items[1].deviceName, display1);
    EXPECT_TRUE(isUntouchedFrom(2));
}

TEST_F(MonitorListExport, writes_nothing_behind_the_last_monitor) {
    for (const std::int32_t capacity : {3, 4, largest}) {
        reset();
        EXPECT_EQ(copy(capacity), 3);
        EXPECT_STREQ(items[2].deviceName, display3);
        EXPECT_TRUE(isUntouchedFrom(3));
    }
}

// Promise (getMonitorList): The four bytes of padding at the end of each record keep what the
// caller had there.
TEST_F(MonitorListExport, fills_every_field_but_not_the_padding) {
    ASSERT_EQ(copy(3), 3);
    const std::array<DisplayMode, 3> modes{smallMode, wideMode, {5760, 0, 1024, 768, 59}};
    const std::array<const wchar_t*, 3> models{L"Model B", L"Model A", L"Model C"};
    for (std::size_t i = 0; i < 3; ++i) {
        EXPECT_EQ(items[i].handle, desktop.monitors.all[i].handle);
        EXPECT_EQ(items[i].deviceName, desktop.monitors.all[i].deviceName);
        EXPECT_STREQ(items[i].friendlyName, models[i]);
        EXPECT_STREQ(items[i].monitorId, L"");
        EXPECT_EQ(items[i].x, modes[i].x);
        EXPECT_EQ(items[i].y, modes[i].y);
        EXPECT_EQ(items[i].width, static_cast<std::int32_t>(modes[i].width));
        EXPECT_EQ(items[i].height, static_cast<std::int32_t>(modes[i].height));
        EXPECT_EQ(items[i].refreshRate, static_cast<std::int32_t>(modes[i].frequency));
        EXPECT_TRUE(areUntouched(&items[i].refreshRate + 1, &items[i + 1]));
    }
}

// A text without repetition, so that a shifted copy shows.
std::wstring textOf(std::size_t length, wchar_t first) {
    std::wstring text;
    for (std::size_t i = 0; i < length; ++i) {
        text += static_cast<wchar_t>(first + i);
    }
    return text;
}

TEST_F(MonitorListExport, cuts_texts_at_127_units_and_fills_up_with_zeros) {
    const auto expectField = [](const VLChar16(&field)[128], const std::wstring& text) {
        std::wstring expected = text.substr(0, 127);
        expected.resize(128, L'\0');
        EXPECT_EQ(std::wstring(field, 128), expected) << text.size();
    };
    for (const std::size_t length : {0u, 1u, 126u, 127u, 128u, 1000u}) {
        // Longer than any text that the display configuration knows.
        vorlen::ui::MonitorInfo& cached = cachedMonitors(service()).at(0);
        cached.deviceName = textOf(length, 0x3041);
        cached.friendlyName = textOf(length, 0x4E00);
        cached.monitorId = textOf(length, 0xAC00);
        reset();
        ASSERT_EQ(copy(1), 1);
        expectField(items[0].deviceName, cached.deviceName);
        expectField(items[0].friendlyName, cached.friendlyName);
        expectField(items[0].monitorId, cached.monitorId);
    }
}

// Promise (getMonitorList): While the display configuration cannot be read, `friendlyName` is
// empty. The next refresh that can read it fills it in.
TEST_F(MonitorListExport, has_no_names_until_the_configuration_can_be_read) {
    desktop.journal.fail("QueryDisplayConfig", 1, ERROR_GEN_FAILURE);
    module.exports->updateMonitorList();
    EXPECT_EQ(copy(3), 3);
    EXPECT_STREQ(items[0].friendlyName, L"");
    module.exports->updateMonitorList();
    EXPECT_EQ(copy(3), 3);
    EXPECT_STREQ(items[0].friendlyName, L"Model B");
}

TEST_F(MonitorListExport, is_empty_without_monitors) {
    desktop.monitors.all.clear();
    module.exports->updateMonitorList();
    EXPECT_EQ(module.exports->getMonitorList(nullptr, 0), 0);
    EXPECT_EQ(copy(4), 0);
    EXPECT_EQ(copy(-3), -3);
    EXPECT_TRUE(isUntouchedFrom(0));
}

} // namespace
} // namespace tests
