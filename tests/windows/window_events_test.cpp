#include "tests/windows/windows_test.h"

#include <gmock/gmock.h>

#include <stdexcept>

namespace tests {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class WindowEvent : public WindowsTest {
protected:
    void deliver(DWORD event, const SimulatedWindow& window) {
        desktop.eventHooks.deliver(event, window.handle);
    }
};

TEST_F(WindowEvent, without_a_window_changes_nothing_and_asks_nothing) {
    desktop.windows.add(L"a");
    const WindowList list;
    desktop.journal.clear();
    for (DWORD event = 0x8000; event <= 0x801A; ++event) {
        desktop.eventHooks.deliver(event, nullptr);
    }
    EXPECT_THAT(titlesOf(list), ElementsAre(L"a"));
    EXPECT_THAT(desktop.journal.calls(), IsEmpty());
}

TEST_F(WindowEvent, appends_windows_in_the_order_in_which_they_appear) {
    SimulatedWindow& early = desktop.windows.add(L"early");
    early.visible = false;
    desktop.windows.add(L"seeded");
    const WindowList list;
    deliver(shown, desktop.windows.add(L"late"));
    early.visible = true;
    deliver(uncloaked, early);
    EXPECT_THAT(titlesOf(list), ElementsAre(L"seeded", L"late", L"early"));
}

TEST_F(WindowEvent, adds_a_hidden_window_when_it_is_shown) {
    SimulatedWindow& window = desktop.windows.add(L"a");
    window.visible = false;
    const WindowList list;
    EXPECT_THAT(list.GetCurrentWindows(), IsEmpty());
    window.visible = true;
    deliver(shown, window);
    EXPECT_THAT(titlesOf(list), ElementsAre(L"a"));
}

TEST_F(WindowEvent, adds_a_cloaked_window_when_it_is_uncloaked) {
    SimulatedWindow& window = desktop.windows.add(L"a", coreWindowClass);
    window.cloaked = 2;
    const WindowList list;
    deliver(shown, window);
    EXPECT_THAT(list.GetCurrentWindows(), IsEmpty());
    window.cloaked = 0;
    deliver(uncloaked, window);
    EXPECT_THAT(titlesOf(list), ElementsAre(L"a"));
}

TEST_F(WindowEvent, adds_no_window_that_is_not_capturable) {
    const WindowList list;
    SimulatedWindow& window = desktop.windows.add(L"a");
    window.style |= WS_DISABLED;
    deliver(shown, window);
    deliver(uncloaked, window);
    EXPECT_THAT(list.GetCurrentWindows(), IsEmpty());
}

TEST_F(WindowEvent, that_shows_a_window_twice_lists_it_once) {
    const WindowList list;
    const SimulatedWindow& window = desktop.windows.add(L"a");
    deliver(shown, window);
    deliver(shown, window);
    EXPECT_THAT(titlesOf(list), ElementsAre(L"a"));
}

TEST_F(WindowEvent, that_renames_a_window_leaves_the_title_that_it_had_when_it_appeared) {
    SimulatedWindow& window = desktop.windows.add(L"old");
    const WindowList list;
    window.title = L"new";
    deliver(renamed, window);
    EXPECT_THAT(titlesOf(list), ElementsAre(L"old"));
    deliver(shown, window);
    EXPECT_THAT(titlesOf(list), ElementsAre(L"old"));
}

TEST_F(WindowEvent, that_hides_cloaks_or_disables_a_window_leaves_it_listed) {
    SimulatedWindow& window = desktop.windows.add(L"a", coreWindowClass);
    const WindowList list;
    window.visible = false;
    deliver(EVENT_OBJECT_HIDE, window);
    window.cloaked = 1;
    deliver(EVENT_OBJECT_CLOAKED, window);
    window.style |= WS_DISABLED;
    deliver(EVENT_OBJECT_STATECHANGE, window);
    EXPECT_THAT(titlesOf(list), ElementsAre(L"a"));
}

TEST_F(WindowEvent, that_destroys_an_unlisted_window_changes_nothing_and_asks_nothing) {
    desktop.windows.add(L"a");
    const WindowList list;
    SimulatedWindow& unlisted = desktop.windows.add(L"b");
    unlisted.alive = false;
    const std::uint64_t revision = list.GetRevision();
    desktop.journal.clear();
    deliver(destroyed, unlisted);
    EXPECT_THAT(desktop.journal.calls(), IsEmpty());
    EXPECT_THAT(titlesOf(list), ElementsAre(L"a"));
    EXPECT_EQ(list.GetRevision(), revision);
}

TEST_F(WindowEvent, that_destroys_a_window_twice_removes_one) {
    const SimulatedWindow& first = desktop.windows.add(L"a");
    desktop.windows.add(L"b");
    const WindowList list;
    deliver(destroyed, first);
    deliver(destroyed, first);
    EXPECT_THAT(titlesOf(list), ElementsAre(L"b"));
}

TEST_F(WindowEvent, lists_a_window_anew_at_the_end_whose_handle_is_used_again) {
    SimulatedWindow& window = desktop.windows.add(L"first");
    desktop.windows.add(L"other");
    const WindowList list;
    deliver(destroyed, window);
    window.title = L"second";
    deliver(shown, window);
    EXPECT_THAT(titlesOf(list), ElementsAre(L"other", L"second"));
}

TEST_F(WindowEvent, moves_later_windows_up_when_one_is_destroyed) {
    std::vector<HWND> handles;
    for (const wchar_t* const title : {L"0", L"1", L"2", L"3", L"4"}) {
        handles.push_back(desktop.windows.add(title).handle);
    }
    const WindowList list;
    desktop.eventHooks.deliver(destroyed, handles[2]);
    EXPECT_THAT(titlesOf(list), ElementsAre(L"0", L"1", L"3", L"4"));
    EXPECT_THAT(handlesOf(list), ElementsAre(handles[0], handles[1], handles[3], handles[4]));
}

// The thread that retrieves messages may be between a call of its own and its GetLastError.
TEST_F(WindowEvent, leaves_the_last_error_as_it_was) {
    SimulatedWindow& listed = desktop.windows.add(L"listed");
    const WindowList list;
    SimulatedWindow& refused = desktop.windows.add(L"refused");
    refused.visible = false;
    SimulatedWindow& dead = desktop.windows.add(L"dead");
    dead.alive = false;
    SimulatedWindow& added = desktop.windows.add(L"added");
    const auto expectKept = [&](DWORD event, const SimulatedWindow& window) {
        SetLastError(77);
        deliver(event, window);
        EXPECT_EQ(GetLastError(), 77u) << "event " << event << ", window " << window.handle;
    };
    for (const DWORD event : {shown, uncloaked, renamed, destroyed}) {
        for (const SimulatedWindow* const window : {&refused, &dead, &added, &listed}) {
            expectKept(event, *window);
        }
    }
    desktop.journal.at("GetWindowTextW", 1, [] {
        SetLastError(5);
        throw std::runtime_error("planned");
    });
    expectKept(shown, added);
}

TEST_F(WindowEvent, leaves_the_last_error_as_it_was_on_a_thread_without_a_list) {
    { const WindowList list; }
    const SimulatedEventHook& hook = desktop.eventHooks.all.at(0);
    SetLastError(77);
    hook.procedure(hook.handle, destroyed, nullptr, OBJID_WINDOW, CHILDID_SELF, hook.thread, 0);
    EXPECT_EQ(GetLastError(), 77u);
}

} // namespace
} // namespace tests
