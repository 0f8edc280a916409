#include "tests/fixtures/module_test.h"

#include <gmock/gmock.h>

#include <array>
#include <cstring>
#include <limits>
#include <type_traits>

namespace tests {
namespace {

constexpr auto smallest = std::numeric_limits<std::int32_t>::min();
constexpr auto largest = std::numeric_limits<std::int32_t>::max();

// The caller's array, full of a byte that the library never writes by chance.
class MonitorListExport : public RunningModuleTest {
protected:
    static constexpr unsigned char untouched = 0xC5;
    static constexpr std::size_t stride = 800;

    MonitorListExport() { bytes.fill(untouched); }

    int copy(std::int32_t capacity) {
        auto* const items = static_cast<MonitorListItem*>(static_cast<void*>(bytes.data()));
        return module.exports->getMonitorList(items, capacity);
    }

    template <typename Value>
    Value at(std::size_t offset) const {
        static_assert(std::is_trivially_copyable_v<Value>);
        Value value;
        std::memcpy(&value, bytes.data() + offset, sizeof(value));
        return value;
    }

    std::wstring textAt(std::size_t offset) const {
        return at<std::array<wchar_t, 128>>(offset).data();
    }

    bool isUntouched(std::size_t from, std::size_t to) const {
        return std::all_of(bytes.begin() + static_cast<std::ptrdiff_t>(from),
                           bytes.begin() + static_cast<std::ptrdiff_t>(to),
                           [](unsigned char byte) { return byte == untouched; });
    }

    alignas(MonitorListItem) std::array<unsigned char, 4 * stride> bytes;
};

TEST_F(MonitorListExport, tells_the_number_of_monitors_without_an_array_whatever_the_capacity) {
    for (const std::int32_t capacity : {0, 1, 3, 100, -3, smallest, largest}) {
        EXPECT_EQ(module.exports->getMonitorList(nullptr, capacity), 3) << capacity;
    }
}

TEST_F(MonitorListExport, writes_nothing_for_a_capacity_of_zero) {
    EXPECT_EQ(copy(0), 0);
    EXPECT_TRUE(isUntouched(0, bytes.size()));
}

TEST_F(MonitorListExport, returns_a_negative_capacity_and_writes_nothing) {
    for (const std::int32_t capacity : {-1, -3, smallest}) {
        EXPECT_EQ(copy(capacity), capacity);
        EXPECT_TRUE(isUntouched(0, bytes.size()));
    }
}

TEST_F(MonitorListExport, writes_the_first_two_of_three_where_two_fit) {
    EXPECT_EQ(copy(2), 2);
    EXPECT_EQ(textAt(8), display2);
    EXPECT_EQ(textAt(stride + 8), display1);
    EXPECT_TRUE(isUntouched(2 * stride, bytes.size()));
}

TEST_F(MonitorListExport, writes_all_of_them_and_no_more_where_more_fit) {
    for (const std::int32_t capacity : {3, 4, largest}) {
        bytes.fill(untouched);
        EXPECT_EQ(copy(capacity), 3);
        EXPECT_EQ(textAt(2 * stride + 8), display3);
        EXPECT_TRUE(isUntouched(3 * stride, bytes.size()));
    }
}

TEST_F(MonitorListExport, puts_every_field_at_its_offset) {
    ASSERT_EQ(copy(3), 3);
    const std::array<DisplayMode, 3> modes{smallMode, wideMode, {5760, 0, 1024, 768, 59}};
    const std::array<std::wstring, 3> models{L"Model B", L"Model A", L"Model C"};
    for (std::size_t i = 0; i < 3; ++i) {
        const std::size_t record = i * stride;
        EXPECT_EQ(at<HMONITOR>(record + 0), desktop.monitors.all[i].handle);
        EXPECT_EQ(textAt(record + 8), desktop.monitors.all[i].deviceName);
        EXPECT_EQ(textAt(record + 264), models[i]);
        EXPECT_EQ(textAt(record + 520), L"");
        EXPECT_EQ(at<std::int32_t>(record + 776), modes[i].x);
        EXPECT_EQ(at<std::int32_t>(record + 780), modes[i].y);
        EXPECT_EQ(at<std::uint32_t>(record + 784), modes[i].width);
        EXPECT_EQ(at<std::uint32_t>(record + 788), modes[i].height);
        EXPECT_EQ(at<std::uint32_t>(record + 792), modes[i].frequency);
    }
}

TEST_F(MonitorListExport, leaves_the_padding_of_each_record_as_it_was) {
    copy(3);
    for (std::size_t record = 0; record < 3 * stride; record += stride) {
        EXPECT_TRUE(isUntouched(record + 796, record + stride));
    }
}

TEST_F(MonitorListExport, has_empty_names_until_the_configuration_can_be_read_again) {
    desktop.journal.fail("QueryDisplayConfig", 1, ERROR_GEN_FAILURE);
    module.exports->updateMonitorList();
    EXPECT_EQ(copy(3), 3);
    EXPECT_EQ(textAt(264), L"");
    module.exports->updateMonitorList();
    EXPECT_EQ(copy(3), 3);
    EXPECT_EQ(textAt(264), L"Model B");
}

TEST_F(MonitorListExport, is_empty_where_there_is_no_monitor) {
    desktop.monitors.all.clear();
    module.exports->updateMonitorList();
    EXPECT_EQ(module.exports->getMonitorList(nullptr, 0), 0);
    EXPECT_EQ(copy(4), 0);
    EXPECT_EQ(copy(-3), -3);
    EXPECT_TRUE(isUntouched(0, bytes.size()));
}

} // namespace
} // namespace tests
