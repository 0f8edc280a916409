#include "tests/fixtures/window_module_test.h"

#include <array>

namespace tests {
namespace {

// The records are copied by the template that MonitorListExport tests. How the list follows the
// desktop: WindowSnapshot.
class WindowListExport : public WindowModuleTest {
protected:
    void SetUp() override {
        desktop.windows.add(L"a", L"ClassA");
        desktop.windows.add(L"b", L"ClassB");
        desktop.windows.add(L"c", L"ClassC");
    }

    int copy(std::int32_t capacity) {
        return module.exports->getWindowList(items.data(), capacity);
    }

    std::array<WindowListItem, 5> items{};
};

TEST_F(WindowListExport, fills_every_field_in_the_order_of_appearance) {
    module.init();
    ASSERT_EQ(copy(5), 3);
    for (std::size_t i = 0; i < 3; ++i) {
        const SimulatedWindow& window = *desktop.windows.find(desktop.windows.order[i]);
        EXPECT_EQ(items[i].handle, window.handle);
        EXPECT_EQ(items[i].title, window.title);
        EXPECT_EQ(items[i].className, window.className);
    }
    EXPECT_EQ(items[3].handle, nullptr);
}

TEST_F(WindowListExport, treats_the_capacity_as_getMonitorList_does) {
    module.init();
    EXPECT_EQ(module.exports->getWindowList(nullptr, -3), 3);
    EXPECT_EQ(copy(-3), -3);
    EXPECT_EQ(items[0].handle, nullptr);
    EXPECT_EQ(copy(2), 2);
    EXPECT_STREQ(items[1].title, L"b");
    EXPECT_EQ(items[2].handle, nullptr);
}

TEST_F(WindowListExport, is_up_to_date_at_every_call) {
    module.init();
    EXPECT_EQ(module.exports->getWindowList(nullptr, 0), 3);
    show(L"d");
    EXPECT_EQ(module.exports->getWindowList(nullptr, 0), 4);
    destroy(desktop.windows.order[0]);
    ASSERT_EQ(copy(5), 3);
    EXPECT_STREQ(items[0].title, L"b");
    EXPECT_STREQ(items[2].title, L"d");
}

// Promise (Every exported function): The texts of records are cut at 127 UTF-16 units, also through
// a surrogate pair: they need not be valid UTF-16.
TEST_F(WindowListExport, cuts_a_text_through_a_surrogate_pair) {
    desktop.windows.order.clear();
    desktop.windows.add(std::wstring(126, L't') + L"\xD83D\xDE00", std::wstring(255, L'c'));
    module.init();
    ASSERT_EQ(copy(1), 1);
    EXPECT_EQ(items[0].title, std::wstring(126, L't') + L"\xD83D");
    EXPECT_EQ(items[0].className, std::wstring(127, L'c'));
}

} // namespace
} // namespace tests
