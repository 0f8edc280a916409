#include "tests/windows/windows_test.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <new>
#include <stdexcept>

namespace tests {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class WindowListSeeding : public WindowsTest {
protected:
    SimulatedWindow& add(const std::wstring& title) { return desktop.windows.add(title); }
};

TEST_F(WindowListSeeding, of_an_empty_desktop_gives_an_empty_list) {
    const WindowList list;
    EXPECT_THAT(list.GetCurrentWindows(), IsEmpty());
}

TEST_F(WindowListSeeding, keeps_the_order_in_which_the_system_names_the_windows) {
    for (const wchar_t* const title : {L"a", L"b", L"c", L"d"}) {
        add(title);
    }
    std::rotate(desktop.windows.order.begin(), desktop.windows.order.begin() + 1,
                desktop.windows.order.end());
    std::swap(desktop.windows.order[0], desktop.windows.order[1]);
    const WindowList list;
    EXPECT_THAT(titlesOf(list), ElementsAre(L"c", L"b", L"d", L"a"));
    EXPECT_EQ(handlesOf(list), desktop.windows.order);
}

TEST_F(WindowListSeeding, keeps_the_records_with_their_zeros) {
    desktop.windows.add(L"Title", L"Class");
    const WindowList list;
    EXPECT_EQ(list.GetCurrentWindows().at(0).title, std::wstring(L"Title\0", 6));
    EXPECT_EQ(list.GetCurrentWindows().at(0).className, L"Class" + std::wstring(251, L'\0'));
}

TEST_F(WindowListSeeding, passes_over_windows_that_are_not_capturable) {
    add(L"a");
    add(L"hidden").visible = false;
    add(L"disabled").style |= WS_DISABLED;
    add(L"tool").extendedStyle |= WS_EX_TOOLWINDOW;
    add(L"part").root = nullptr;
    desktop.windows.shellWindow = add(L"shell").handle;
    desktop.windows.add(L"PopupHost", L"Xaml_WindowedPopupClass");
    desktop.windows.add(L"cloaked", coreWindowClass).cloaked = 2;
    add(L"b");
    const WindowList list;
    EXPECT_THAT(titlesOf(list), ElementsAre(L"a", L"b"));
}

TEST_F(WindowListSeeding, asks_an_untitled_window_for_nothing_but_the_length_of_its_title) {
    const SimulatedWindow& untitled = add(L"");
    const WindowList list;
    EXPECT_THAT(list.GetCurrentWindows(), IsEmpty());
    EXPECT_EQ(desktop.windows.callsAbout(untitled.handle), 1u);
}

TEST_F(WindowListSeeding, passes_over_a_window_with_a_negative_length) {
    add(L"a");
    desktop.journal.fail("GetWindowTextLengthW", 1, -1);
    const WindowList list;
    EXPECT_THAT(list.GetCurrentWindows(), IsEmpty());
    EXPECT_EQ(desktop.journal.count("GetWindowTextW"), 0u);
}

TEST_F(WindowListSeeding, lists_a_window_once_that_the_system_names_twice) {
    add(L"a");
    add(L"b");
    desktop.windows.order.push_back(desktop.windows.order.front());
    const WindowList list;
    EXPECT_THAT(titlesOf(list), ElementsAre(L"a", L"b"));
}

TEST_F(WindowListSeeding, lists_windows_of_the_same_title_and_class_each) {
    add(L"same");
    add(L"same");
    const WindowList list;
    EXPECT_THAT(titlesOf(list), ElementsAre(L"same", L"same"));
}

TEST_F(WindowListSeeding, enumerates_once_and_installs_the_hook_afterwards) {
    const WindowList list;
    EXPECT_THAT(desktop.windowCalls(), ElementsAre("EnumWindows", "SetWinEventHook"));
}

TEST_F(WindowListSeeding, does_not_depend_on_what_the_enumeration_returns) {
    add(L"a");
    desktop.journal.fail("EnumWindows");
    const WindowList list;
    EXPECT_THAT(titlesOf(list), ElementsAre(L"a"));
    EXPECT_EQ(desktop.eventHooks.installed(), 1u);
}

// The platform's frames lie between the code that fails and the caller of the constructor.
class FailedSeeding : public WindowListSeeding {
protected:
    void SetUp() override {
        add(L"a");
        add(L"b");
        add(L"c");
    }
};

TEST_F(FailedSeeding, reaches_the_caller_and_leaves_neither_hook_nor_list) {
    desktop.journal.at("GetClassNameW", 2, [] { throw std::bad_alloc(); });
    EXPECT_THROW(WindowList(), std::bad_alloc);
    EXPECT_EQ(WindowList::Get(), nullptr);
    EXPECT_EQ(desktop.journal.count("SetWinEventHook"), 0u);
}

TEST_F(FailedSeeding, lets_the_enumeration_end_without_looking_at_another_window) {
    desktop.journal.at("GetClassNameW", 2, [] { throw std::runtime_error("planned"); });
    EXPECT_THROW(WindowList(), std::runtime_error);
    EXPECT_EQ(desktop.windows.callsAbout(desktop.windows.order[2]), 0u);
}

TEST_F(FailedSeeding, does_not_stand_in_the_way_of_the_next_list) {
    desktop.journal.at("GetWindowTextW", 1, [] { throw std::bad_alloc(); });
    EXPECT_THROW(WindowList(), std::bad_alloc);
    const WindowList list;
    EXPECT_EQ(WindowList::Get(), &list);
    EXPECT_THAT(titlesOf(list), ElementsAre(L"a", L"b", L"c"));
}

TEST_F(FailedSeeding, of_a_second_list_leaves_neither_of_the_two) {
    new WindowList; // owned by the thread from now on
    desktop.journal.at("GetWindowTextW", 1, [] { throw std::bad_alloc(); });
    EXPECT_THROW(WindowList(), std::bad_alloc);
    EXPECT_EQ(WindowList::Get(), nullptr);
    EXPECT_EQ(desktop.eventHooks.installed(), 0u);
}

} // namespace
} // namespace tests
