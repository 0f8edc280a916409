#include "tests/support/account.h"
#include "tests/support/other_thread.h"
#include "tests/windows/windows_test.h"

#include <gmock/gmock.h>

#include <memory>
#include <type_traits>

namespace tests {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

static_assert(!std::is_copy_constructible_v<WindowList> && !std::is_copy_assignable_v<WindowList>);

class WindowListOfThread : public WindowsTest {};

TEST_F(WindowListOfThread, is_null_where_none_was_made) {
    EXPECT_EQ(WindowList::Get(), nullptr);
    const WindowList list;
    EXPECT_EQ(onAnotherThread([] { return WindowList::Get(); }), nullptr);
}

TEST_F(WindowListOfThread, is_the_one_that_was_made_on_the_thread) {
    const WindowList list;
    EXPECT_EQ(WindowList::Get(), &list);
    EXPECT_TRUE(onAnotherThread([] {
        const WindowList other;
        return WindowList::Get() == &other;
    }));
    EXPECT_EQ(WindowList::Get(), &list);
}

TEST_F(WindowListOfThread, is_forgotten_when_it_is_destroyed) {
    { const WindowList list; }
    EXPECT_EQ(WindowList::Get(), nullptr);
}

TEST_F(WindowListOfThread, is_the_second_once_a_second_was_made) {
    new WindowList; // owned by the thread from now on
    const WindowList second;
    EXPECT_EQ(WindowList::Get(), &second);
}

TEST_F(WindowListOfThread, is_destroyed_with_its_hook_before_the_second_reads_the_desktop) {
    new WindowList;
    desktop.journal.clear();
    const WindowList second;
    EXPECT_THAT(desktop.windowCalls(),
                ElementsAre("UnhookWinEvent", "EnumWindows", "SetWinEventHook"));
    EXPECT_TRUE(desktop.eventHooks.all[0].released);
    EXPECT_FALSE(desktop.eventHooks.all[1].released);
}

TEST_F(WindowListOfThread, leaves_its_combo_boxes_to_nobody_when_a_second_follows) {
    const HWND box = desktop.comboBoxes.add();
    (new WindowList)->RegisterComboBoxForUpdates(box);
    const WindowList second;
    desktop.eventHooks.deliver(shown, desktop.windows.add(L"a").handle);
    EXPECT_THAT(titlesOf(second), ElementsAre(L"a"));
    EXPECT_THAT(desktop.comboBoxes.entries(box), IsEmpty());
}

TEST_F(WindowListOfThread, is_set_before_the_windows_are_enumerated) {
    const WindowList* seen = nullptr;
    desktop.journal.at("EnumWindows", 1, [&] { seen = WindowList::Get(); });
    const WindowList list;
    EXPECT_EQ(seen, &list);
}

TEST_F(WindowListOfThread, is_cleared_by_any_list_that_the_thread_destroys) {
    expectBlocksLeft(1); // the entry of the first list, until the program ends
    desktop.eventHooks.releasesToRefuse = 1;
    desktop.eventHooks.leftInstalled = 1;
    auto list = std::make_unique<WindowList>();
    onAnotherThread([&] {
        const WindowList own;
        list.reset();
        EXPECT_EQ(WindowList::Get(), nullptr);
    });
}

TEST_F(WindowListOfThread, is_not_found_once_it_was_destroyed_on_another_thread) {
    expectBlocksLeft(1); // its entry, until the program ends
    desktop.eventHooks.releasesToRefuse = 1;
    desktop.eventHooks.leftInstalled = 1;
    auto list = std::make_unique<WindowList>();
    onAnotherThread([&] { list.reset(); });
    EXPECT_EQ(WindowList::Get(), nullptr);
    const WindowList next;
    EXPECT_EQ(WindowList::Get(), &next);
}

TEST_F(WindowListOfThread, gets_the_events_of_its_own_thread_only) {
    const WindowList list;
    const HWND window = desktop.windows.add(L"a").handle;
    EXPECT_THAT(onAnotherThread([&] {
                    desktop.windows.find(window)->visible = false;
                    const WindowList other;
                    desktop.windows.find(window)->visible = true;
                    desktop.eventHooks.deliver(shown, window);
                    return titlesOf(other);
                }),
                ElementsAre(L"a"));
    EXPECT_THAT(list.GetCurrentWindows(), IsEmpty());
}

class WindowListHook : public WindowsTest {};

TEST_F(WindowListHook, is_there_as_long_as_the_list) {
    {
        const WindowList list;
        EXPECT_EQ(desktop.eventHooks.installed(), 1u);
    }
    EXPECT_EQ(desktop.eventHooks.installed(), 0u);
    EXPECT_EQ(desktop.journal.count("UnhookWinEvent"), 1u);
}

TEST_F(WindowListHook, is_released_while_the_list_is_still_that_of_the_thread) {
    auto list = std::make_unique<WindowList>();
    const WindowList* seen = nullptr;
    desktop.journal.at("UnhookWinEvent", 1, [&] { seen = WindowList::Get(); });
    const auto* const expected = list.get();
    list.reset();
    EXPECT_EQ(seen, expected);
    EXPECT_EQ(WindowList::Get(), nullptr);
}

TEST_F(WindowListHook, leaves_the_last_error_as_it_was_when_it_is_released) {
    {
        const WindowList list;
        SetLastError(77);
    }
    EXPECT_EQ(GetLastError(), 77u);
}

TEST_F(WindowListHook, that_is_refused_leaves_the_list_as_it_was_seeded) {
    desktop.windows.add(L"a");
    desktop.journal.fail("SetWinEventHook");
    {
        const WindowList list;
        EXPECT_EQ(WindowList::Get(), &list);
        EXPECT_THAT(titlesOf(list), ElementsAre(L"a"));
    }
    EXPECT_EQ(WindowList::Get(), nullptr);
    EXPECT_EQ(desktop.journal.count("UnhookWinEvent"), 0u);
}

TEST_F(WindowListHook, that_is_refused_leaves_combo_boxes_usable) {
    desktop.windows.add(L"a");
    desktop.journal.fail("SetWinEventHook");
    WindowList list;
    const HWND box = desktop.comboBoxes.add();
    list.RegisterComboBoxForUpdates(box);
    EXPECT_THAT(desktop.comboBoxes.entries(box), ElementsAre(L"a"));
}

TEST_F(WindowListHook, that_cannot_be_released_does_not_keep_the_list) {
    desktop.journal.fail("UnhookWinEvent");
    desktop.eventHooks.leftInstalled = 1;
    { const WindowList list; }
    EXPECT_EQ(WindowList::Get(), nullptr);
}

// An event that was on its way when the hook was released.
TEST_F(WindowListHook, ignores_an_event_that_arrives_when_the_list_has_gone) {
    { const WindowList list; }
    const HWND window = desktop.windows.add(L"a").handle;
    desktop.journal.clear();
    const SimulatedEventHook& hook = desktop.eventHooks.all.at(0);
    for (const DWORD event : {shown, uncloaked, destroyed}) {
        hook.procedure(hook.handle, event, window, OBJID_WINDOW, CHILDID_SELF, hook.thread, 0);
    }
    EXPECT_THAT(desktop.journal.calls(), IsEmpty());
}

TEST_F(WindowListHook, ignores_an_event_on_a_thread_without_a_list) {
    const WindowList list;
    const HWND window = desktop.windows.add(L"a").handle;
    const SimulatedEventHook hook = desktop.eventHooks.all.at(0);
    onAnotherThread([&] {
        hook.procedure(hook.handle, shown, window, OBJID_WINDOW, CHILDID_SELF, hook.thread, 0);
    });
    EXPECT_THAT(list.GetCurrentWindows(), IsEmpty());
}

} // namespace
} // namespace tests
