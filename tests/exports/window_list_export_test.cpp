#include "tests/windows/window_module_test.h"

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
class WindowListExport : public WindowModuleTest {
protected:
    static constexpr unsigned char untouched = 0xC5;
    static constexpr std::size_t stride = 520;

    WindowListExport() { bytes.fill(untouched); }

    void SetUp() override {
        desktop.windows.add(L"a", L"ClassA");
        desktop.windows.add(L"b", L"ClassB");
        desktop.windows.add(L"c", L"ClassC");
    }

    WindowListItem* items() {
        return static_cast<WindowListItem*>(static_cast<void*>(bytes.data()));
    }

    int copy(std::int32_t capacity) { return module.exports->getWindowList(items(), capacity); }

    template <typename Value>
    Value at(std::size_t offset) const {
        static_assert(std::is_trivially_copyable_v<Value>);
        Value value{};
        std::memcpy(&value, bytes.data() + offset, sizeof(Value));
        return value;
    }

    // The whole field, with everything behind its end.
    std::wstring fieldAt(std::size_t offset) const {
        const auto field = at<std::array<wchar_t, 128>>(offset);
        return {field.begin(), field.end()};
    }

    std::wstring textAt(std::size_t offset) const {
        const std::wstring field = fieldAt(offset);
        return field.substr(0, field.find(L'\0'));
    }

    bool isUntouched(std::size_t from) const {
        return std::all_of(bytes.begin() + static_cast<std::ptrdiff_t>(from), bytes.end(),
                           [](unsigned char byte) { return byte == untouched; });
    }

    alignas(WindowListItem) std::array<unsigned char, 5 * stride> bytes{};
};

TEST_F(WindowListExport, is_zero_without_a_service_and_writes_nothing) {
    for (const std::int32_t capacity : {0, 5, -3}) {
        EXPECT_EQ(copy(capacity), 0);
        EXPECT_EQ(module.exports->getWindowList(nullptr, capacity), 0);
    }
    module.init();
    module.cleanup();
    EXPECT_EQ(copy(5), 0);
    EXPECT_TRUE(isUntouched(0));
}

TEST_F(WindowListExport, tells_the_number_of_windows_without_an_array_whatever_the_capacity) {
    module.init();
    for (const std::int32_t capacity : {0, 1, 3, 100, -3, smallest, largest}) {
        EXPECT_EQ(module.exports->getWindowList(nullptr, capacity), 3) << capacity;
    }
}

TEST_F(WindowListExport, writes_nothing_for_a_capacity_of_zero) {
    module.init();
    EXPECT_EQ(copy(0), 0);
    EXPECT_TRUE(isUntouched(0));
}

TEST_F(WindowListExport, returns_a_negative_capacity_and_writes_nothing) {
    module.init();
    for (const std::int32_t capacity : {-1, -3, smallest}) {
        EXPECT_EQ(copy(capacity), capacity);
        EXPECT_TRUE(isUntouched(0));
    }
}

TEST_F(WindowListExport, writes_the_first_two_of_three_where_two_fit) {
    module.init();
    EXPECT_EQ(copy(2), 2);
    EXPECT_EQ(textAt(8), L"a");
    EXPECT_EQ(textAt(stride + 8), L"b");
    EXPECT_TRUE(isUntouched(2 * stride));
}

TEST_F(WindowListExport, writes_all_of_them_and_no_more_where_more_fit) {
    module.init();
    for (const std::int32_t capacity : {3, 4, largest}) {
        bytes.fill(untouched);
        EXPECT_EQ(copy(capacity), 3);
        EXPECT_EQ(textAt(2 * stride + 8), L"c");
        EXPECT_TRUE(isUntouched(3 * stride));
    }
}

TEST_F(WindowListExport, puts_every_field_at_its_offset) {
    module.init();
    ASSERT_EQ(copy(3), 3);
    for (std::size_t i = 0; i < 3; ++i) {
        const SimulatedWindow& window = *desktop.windows.find(desktop.windows.order[i]);
        EXPECT_EQ(at<HWND>(i * stride), window.handle);
        EXPECT_EQ(textAt(i * stride + 8), window.title);
        EXPECT_EQ(textAt(i * stride + 264), window.className);
    }
}

TEST_F(WindowListExport, is_up_to_date_at_every_call) {
    module.init();
    EXPECT_EQ(module.exports->getWindowList(nullptr, 0), 3);
    show(L"d");
    EXPECT_EQ(module.exports->getWindowList(nullptr, 0), 4);
    destroy(desktop.windows.order[0]);
    ASSERT_EQ(copy(5), 3);
    EXPECT_EQ(textAt(8), L"b");
    EXPECT_EQ(textAt(2 * stride + 8), L"d");
}

TEST_F(WindowListExport, gives_the_last_snapshot_while_the_list_is_off) {
    module.init();
    useWindowList(false);
    destroy(desktop.windows.order[0]);
    ASSERT_EQ(copy(5), 3);
    EXPECT_EQ(textAt(8), L"a");
}

TEST_F(WindowListExport, is_empty_where_there_is_no_window) {
    desktop.windows.order.clear();
    module.init();
    EXPECT_EQ(module.exports->getWindowList(nullptr, 7), 0);
    EXPECT_EQ(copy(5), 0);
    EXPECT_EQ(copy(-3), -3);
    EXPECT_TRUE(isUntouched(0));
}

TEST_F(WindowListExport, keeps_the_title_that_a_renamed_window_had_when_it_appeared) {
    module.init();
    desktop.windows.find(desktop.windows.order[0])->title = L"new";
    desktop.eventHooks.deliver(EVENT_OBJECT_NAMECHANGE, desktop.windows.order[0]);
    ASSERT_EQ(copy(1), 1);
    EXPECT_EQ(textAt(8), L"a");
}

// A text without repetition, so that a shifted copy shows.
std::wstring lettersOf(std::size_t length) {
    std::wstring text;
    for (std::size_t i = 0; i < length; ++i) {
        text += static_cast<wchar_t>(0x3041 + i);
    }
    return text;
}

// The whole field: the first 127 letters at most, and zeros behind them.
std::wstring cut(const std::wstring& text) {
    std::wstring field = text.substr(0, 127);
    field.resize(128, L'\0');
    return field;
}

class WindowText : public WindowListExport, public testing::WithParamInterface<std::size_t> {};

TEST_P(WindowText, is_cut_at_127_units_and_filled_up_with_zeros) {
    const std::wstring title = lettersOf(GetParam());
    const std::wstring className = lettersOf(std::min<std::size_t>(GetParam(), 255));
    desktop.windows.order.clear();
    desktop.windows.add(title, className);
    module.init();
    ASSERT_EQ(copy(1), 1);
    EXPECT_EQ(fieldAt(8), cut(title));
    EXPECT_EQ(fieldAt(264), cut(className));
    EXPECT_TRUE(isUntouched(stride));
}

INSTANTIATE_TEST_SUITE_P(WindowListExport, WindowText,
                         testing::Values(1, 5, 126, 127, 128, 200, 255, 32'767));

TEST_F(WindowText, is_cut_without_regard_to_a_surrogate_pair) {
    desktop.windows.order.clear();
    const std::wstring title = std::wstring(126, L't') + L"\xD83D\xDE00";
    desktop.windows.add(title);
    module.init();
    ASSERT_EQ(copy(1), 1);
    EXPECT_EQ(fieldAt(8), cut(title));
    EXPECT_EQ(fieldAt(8)[126], L'\xD83D');
}

} // namespace
} // namespace tests
