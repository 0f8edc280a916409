#include "tests/windows/windows_test.h"

#include <gmock/gmock.h>

#include <memory>
#include <stdexcept>
#include <type_traits>

namespace tests {
namespace {

using testing::ElementsAre;

static_assert(!std::is_copy_constructible_v<WindowList> && !std::is_copy_assignable_v<WindowList>);

class WindowListTest : public WindowsTest {
protected:
    SimulatedWindow& add(const std::wstring& title) { return desktop.windows.add(title); }
};

TEST_F(WindowListTest, lists_the_capturable_windows_in_the_systems_order) {
    add(L"a");
    add(L"same");
    add(L"hidden").visible = false;
    add(L"disabled").style |= WS_DISABLED;
    add(L"tool").extendedStyle |= WS_EX_TOOLWINDOW;
    add(L"part").root = nullptr;
    desktop.windows.shellWindow = add(L"shell").handle;
    desktop.windows.add(L"PopupHost", L"Xaml_WindowedPopupClass");
    desktop.windows.add(L"cloaked", coreWindowClass).cloaked = 2;
    const HWND same = add(L"same").handle;
    desktop.windows.order.pop_back();
    desktop.windows.order.insert(desktop.windows.order.begin(), same);
    const WindowList list;
    EXPECT_THAT(titlesOf(list), ElementsAre(L"same", L"a", L"same"));
    EXPECT_EQ(list.GetCurrentWindows().front().hwnd, same);
}

TEST_F(WindowListTest, lists_a_window_once_that_the_system_names_twice) {
    add(L"a");
    add(L"b");
    desktop.windows.order.push_back(desktop.windows.order.front());
    const WindowList list;
    EXPECT_THAT(titlesOf(list), ElementsAre(L"a", L"b"));
}

TEST_F(WindowListTest, asks_an_untitled_window_only_for_the_length_of_its_title) {
    const SimulatedWindow& untitled = add(L"");
    const WindowList list;
    EXPECT_EQ(desktop.windows.callsAbout(untitled.handle), 1u);
}

TEST_F(WindowListTest, ignores_what_the_systems_enumeration_returns) {
    add(L"a");
    desktop.journal.fail("EnumWindows");
    const WindowList list;
    EXPECT_THAT(titlesOf(list), ElementsAre(L"a"));
    EXPECT_EQ(desktop.eventHooks.installed(), 1u);
}

// The system's frames lie between the code that fails and the caller of the constructor.
TEST_F(WindowListTest, throws_once_the_systems_enumeration_has_returned) {
    add(L"a");
    add(L"b");
    const SimulatedWindow& afterFailure = add(L"c");
    desktop.journal.at("GetClassNameW", 2, [] { throw std::runtime_error("planned"); });
    EXPECT_THROW(WindowList(), std::runtime_error);
    EXPECT_EQ(desktop.windows.callsAbout(afterFailure.handle), 0u);
    EXPECT_EQ(WindowList::Get(), nullptr);
    EXPECT_EQ(desktop.journal.count("SetWinEventHook"), 0u);
}

TEST_F(WindowListTest, is_the_threads_list_before_it_reads_the_windows) {
    const WindowList* seen = nullptr;
    desktop.journal.at("EnumWindows", 1, [&] { seen = WindowList::Get(); });
    const WindowList list;
    EXPECT_EQ(seen, &list);
}

TEST_F(WindowListTest, destroys_the_threads_earlier_list_before_it_reads_windows) {
    new WindowList; // owned by the thread from now on
    desktop.journal.clear();
    const WindowList second;
    EXPECT_EQ(WindowList::Get(), &second);
    EXPECT_THAT(desktop.windowCalls(),
                ElementsAre("UnhookWinEvent", "EnumWindows", "SetWinEventHook"));
    EXPECT_TRUE(desktop.eventHooks.all[0].released);
}

TEST_F(WindowListTest, leaves_neither_list_when_the_second_cannot_be_made) {
    add(L"a");
    new WindowList; // owned by the thread from now on
    desktop.journal.at("GetWindowTextW", 1, [] { throw std::runtime_error("planned"); });
    EXPECT_THROW(WindowList(), std::runtime_error);
    EXPECT_EQ(WindowList::Get(), nullptr);
    EXPECT_EQ(desktop.eventHooks.installed(), 0u);
}

TEST_F(WindowListTest, is_still_the_threads_list_while_its_hook_is_released) {
    auto list = std::make_unique<WindowList>();
    const WindowList* seen = nullptr;
    desktop.journal.at("UnhookWinEvent", 1, [&] { seen = WindowList::Get(); });
    const auto* const expected = list.get();
    list.reset();
    EXPECT_EQ(seen, expected);
    EXPECT_EQ(WindowList::Get(), nullptr);
}

TEST_F(WindowListTest, keeps_the_last_error_when_its_hook_is_released) {
    {
        const WindowList list;
        SetLastError(77);
    }
    EXPECT_EQ(GetLastError(), 77u);
}

TEST_F(WindowListTest, keeps_the_library_loaded_for_a_hook_that_stays) {
    desktop.journal.fail("UnhookWinEvent");
    desktop.eventHooks.leftInstalled = 1;
    {
        const WindowList list;
        SetLastError(77);
    }
    EXPECT_EQ(GetLastError(), 77u);
    EXPECT_EQ(WindowList::Get(), nullptr);
    EXPECT_EQ(desktop.eventHooks.imagePins, 1u);
}

} // namespace
} // namespace tests
