#include "tests/windows/windows_test.h"

#include <gmock/gmock.h>

#include <algorithm>

namespace tests {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class WindowComboBox : public WindowsTest {
protected:
    void deliver(DWORD event, HWND window) { desktop.eventHooks.deliver(event, window); }

    HWND show(const std::wstring& title) {
        const HWND window = desktop.windows.add(title).handle;
        deliver(shown, window);
        return window;
    }

    HWND makeRegistered() {
        const HWND box = desktop.comboBoxes.add({L"left over"});
        list.RegisterComboBoxForUpdates(box);
        return box;
    }

    const std::vector<std::wstring>& entries(HWND box) { return desktop.comboBoxes.entries(box); }

    // The numbers of the messages that the box got, in order.
    std::vector<UINT> messagesTo(HWND box) const {
        std::vector<UINT> result;
        for (const SentMessage& message : desktop.comboBoxes.messages) {
            if (message.window == box) {
                result.push_back(message.message);
            }
        }
        return result;
    }

    SimulatedWindow& a = desktop.windows.add(L"a");
    SimulatedWindow& b = desktop.windows.add(L"b");
    WindowList list;
};

TEST_F(WindowComboBox, is_emptied_and_filled_with_the_titles_in_order) {
    const HWND box = makeRegistered();
    EXPECT_THAT(messagesTo(box), ElementsAre(0x014Bu, 0x0143u, 0x0143u));
    EXPECT_THAT(entries(box), ElementsAre(L"a", L"b"));
}

TEST_F(WindowComboBox, is_told_of_a_new_window_by_its_title_alone) {
    const HWND box = makeRegistered();
    desktop.comboBoxes.messages.clear();
    show(L"c");
    EXPECT_THAT(messagesTo(box), ElementsAre(0x0143u));
    EXPECT_THAT(entries(box), ElementsAre(L"a", L"b", L"c"));
}

TEST_F(WindowComboBox, is_told_the_index_of_a_destroyed_window) {
    show(L"c");
    show(L"d");
    const HWND c = handlesOf(list).at(2);
    show(L"e");
    const HWND boxes[] = {makeRegistered(), makeRegistered()};
    desktop.comboBoxes.messages.clear();
    deliver(destroyed, c);
    for (const HWND box : boxes) {
        EXPECT_THAT(entries(box), ElementsAre(L"a", L"b", L"d", L"e"));
        EXPECT_THAT(messagesTo(box), ElementsAre(0x0144u));
    }
    for (const SentMessage& message : desktop.comboBoxes.messages) {
        EXPECT_EQ(message.wParam, 2u);
    }
}

TEST_F(WindowComboBox, is_told_in_the_order_of_registration) {
    const HWND first = makeRegistered();
    const HWND second = makeRegistered();
    const HWND third = makeRegistered();
    desktop.comboBoxes.messages.clear();
    deliver(destroyed, show(L"c"));
    std::vector<HWND> told;
    for (const SentMessage& message : desktop.comboBoxes.messages) {
        told.push_back(message.window);
    }
    EXPECT_THAT(told, ElementsAre(first, second, third, first, second, third));
}

TEST_F(WindowComboBox, that_is_registered_twice_is_filled_twice_and_told_everything_twice) {
    const HWND box = makeRegistered();
    list.RegisterComboBoxForUpdates(box);
    EXPECT_THAT(messagesTo(box), ElementsAre(0x014Bu, 0x0143u, 0x0143u, 0x014Bu, 0x0143u, 0x0143u));
    EXPECT_THAT(entries(box), ElementsAre(L"a", L"b"));

    desktop.comboBoxes.messages.clear();
    show(L"c");
    EXPECT_THAT(messagesTo(box), ElementsAre(0x0143u, 0x0143u));
    EXPECT_THAT(entries(box), ElementsAre(L"a", L"b", L"c", L"c"));

    desktop.comboBoxes.messages.clear();
    deliver(destroyed, a.handle);
    EXPECT_THAT(messagesTo(box), ElementsAre(0x0144u, 0x0144u));
}

TEST_F(WindowComboBox, is_emptied_when_no_window_is_listed) {
    deliver(destroyed, a.handle);
    deliver(destroyed, b.handle);
    const HWND box = makeRegistered();
    EXPECT_THAT(messagesTo(box), ElementsAre(0x014Bu));
    EXPECT_THAT(entries(box), IsEmpty());
}

TEST_F(WindowComboBox, keeps_the_title_of_a_renamed_window) {
    const HWND box = makeRegistered();
    desktop.comboBoxes.messages.clear();
    a.title = L"new";
    deliver(renamed, a.handle);
    deliver(shown, a.handle);
    EXPECT_THAT(messagesTo(box), IsEmpty());
    EXPECT_THAT(entries(box), ElementsAre(L"a", L"b"));
}

TEST_F(WindowComboBox, that_is_registered_later_shows_the_old_title_of_a_renamed_window) {
    a.title = L"new";
    EXPECT_THAT(entries(makeRegistered()), ElementsAre(L"a", L"b"));
}

TEST_F(WindowComboBox, is_not_told_of_the_destruction_of_an_unlisted_window) {
    const HWND box = makeRegistered();
    desktop.comboBoxes.messages.clear();
    deliver(destroyed, desktop.windows.add(L"c").handle);
    EXPECT_THAT(messagesTo(box), IsEmpty());
}

TEST_F(WindowComboBox, is_not_told_of_a_window_that_is_shown_again) {
    const HWND box = makeRegistered();
    desktop.comboBoxes.messages.clear();
    deliver(shown, a.handle);
    EXPECT_THAT(messagesTo(box), IsEmpty());
}

TEST_F(WindowComboBox, gets_titles_of_any_length_whole) {
    const HWND box = makeRegistered();
    const std::wstring title = std::wstring(32'766, L't') + L'!';
    show(title);
    EXPECT_THAT(entries(box), ElementsAre(L"a", L"b", title));
}

TEST_F(WindowComboBox, gets_an_empty_text_for_a_title_that_went_while_it_was_read) {
    const HWND box = makeRegistered();
    SimulatedWindow& window = desktop.windows.add(L"c");
    desktop.journal.at("GetWindowTextW", 1, [&] { window.title.clear(); });
    deliver(shown, window.handle);
    EXPECT_THAT(entries(box), ElementsAre(L"a", L"b", L""));
    deliver(destroyed, window.handle);
    EXPECT_THAT(entries(box), ElementsAre(L"a", L"b"));
}

TEST_F(WindowComboBox, that_was_destroyed_stays_registered_and_is_no_error) {
    const HWND gone = makeRegistered();
    const HWND box = makeRegistered();
    desktop.comboBoxes.box(gone).destroyed = true;
    desktop.comboBoxes.messages.clear();
    show(L"c");
    deliver(destroyed, a.handle);
    EXPECT_THAT(messagesTo(gone), ElementsAre(0x0143u, 0x0144u));
    EXPECT_THAT(entries(box), ElementsAre(L"b", L"c"));
    EXPECT_NO_THROW(list.RegisterComboBoxForUpdates(gone));
}

TEST_F(WindowComboBox, stays_in_step_while_many_windows_come_and_go) {
    const HWND box = makeRegistered();
    std::vector<HWND> windows;
    for (int i = 0; i < 1000; ++i) {
        windows.push_back(show(L"window " + std::to_wstring(i)));
        if (i % 3 != 0) {
            const auto gone = windows.begin() + i % static_cast<int>(windows.size());
            deliver(destroyed, *gone);
            windows.erase(gone);
        }
    }
    EXPECT_EQ(entries(box), titlesOf(list));
    windows.insert(windows.begin(), {a.handle, b.handle});
    EXPECT_EQ(handlesOf(list), windows);
}

TEST_F(WindowComboBox, follows_windows_that_go_from_anywhere_and_come_back_behind_the_others) {
    const HWND box = makeRegistered();
    std::vector<std::wstring> expected = {L"a", L"b"};
    std::vector<HWND> windows;
    for (int i = 0; i < 40; ++i) {
        windows.push_back(show(std::to_wstring(i)));
        expected.push_back(std::to_wstring(i));
    }
    // The list itself is not looked at until the end, which would tidy it up.
    for (std::size_t step = 0; step < 200; ++step) {
        const std::size_t chosen = step * 17 % windows.size();
        deliver(destroyed, windows[chosen]);
        std::erase(expected, std::to_wstring(chosen));
        ASSERT_EQ(entries(box), expected) << "after step " << step;
        if (step % 3 != 0) {
            deliver(shown, windows[chosen]);
            expected.push_back(std::to_wstring(chosen));
            ASSERT_EQ(entries(box), expected) << "after step " << step;
        }
    }
    EXPECT_EQ(titlesOf(list), expected);
}

} // namespace
} // namespace tests
