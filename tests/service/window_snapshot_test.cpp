#include "tests/fixtures/window_module_test.h"
#include "tests/support/allocations.h"

#include <gmock/gmock.h>

#include <utility>

namespace tests {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class WindowSnapshot : public TwoWindowsTest {};

TEST_F(WindowSnapshot, holds_the_windows_of_the_start_without_being_switched_on) {
    EXPECT_THAT(titles(), ElementsAre(L"a", L"b"));
    EXPECT_THAT(desktop.journal.calls(), IsEmpty());
}

TEST_F(WindowSnapshot, holds_texts_up_to_their_first_zero) {
    SimulatedWindow& window = add(L"longer");
    desktop.journal.at("GetWindowTextW", 1, [&] { window.title = L"long"; });
    desktop.eventHooks.deliver(EVENT_OBJECT_SHOW, window.handle);
    ASSERT_EQ(windowList().size(), 3u);
    EXPECT_EQ(windowList()[2].hwnd, window.handle);
    EXPECT_EQ(windowList()[2].title, L"long");
    EXPECT_EQ(windowList()[2].className, L"ApplicationWindow");
}

TEST_F(WindowSnapshot, follows_changes_that_leave_the_number_of_windows) {
    titles();
    destroy(desktop.windows.order[1]);
    show(L"c");
    EXPECT_THAT(titles(), ElementsAre(L"a", L"c"));
}

TEST_F(WindowSnapshot, changes_only_when_it_is_asked_for) {
    const auto& snapshot = windowList();
    show(L"c");
    EXPECT_THAT(titlesOf(snapshot), ElementsAre(L"a", L"b"));
    windowList();
    EXPECT_THAT(titlesOf(snapshot), ElementsAre(L"a", L"b", L"c"));
}

TEST_F(WindowSnapshot, is_one_vector_for_the_life_of_the_service) {
    const auto* const first = &windowList();
    show(L"c");
    EXPECT_EQ(&windowList(), first);
    useWindowList(false);
    EXPECT_EQ(&windowList(), first);
    useWindowList(true);
    EXPECT_EQ(&windowList(), first);
}

TEST_F(WindowSnapshot, costs_nothing_while_the_list_is_unchanged) {
    windowList();
    const Allocations allocations({module.image()});
    for (int i = 0; i < 10; ++i) {
        windowList();
    }
    EXPECT_EQ(allocations.requests(), 0u);
    EXPECT_THAT(desktop.journal.calls(), IsEmpty());
}

TEST_F(WindowSnapshot, is_not_taken_again_when_the_list_is_switched_on_twice) {
    desktop.windows.find(desktop.windows.order[0])->title = L"new";
    useWindowList(true);
    EXPECT_THAT(desktop.journal.calls(), IsEmpty());
    EXPECT_THAT(titles(), ElementsAre(L"a", L"b"));
}

// Promise (getWindowList): While the runtime has switched the list of windows off, `getWindowList`
// gives the records of its last call before that.
TEST_F(WindowSnapshot, stays_when_the_list_is_switched_off) {
    titles();
    show(L"c");
    useWindowList(false);
    EXPECT_THAT(desktop.windowCalls(), testing::Contains("UnhookWinEvent"));
    desktop.journal.clear();
    destroy(desktop.windows.order[0]);
    EXPECT_THAT(titles(), ElementsAre(L"a", L"b"));
    useWindowList(false);
    EXPECT_THAT(titles(), ElementsAre(L"a", L"b"));
    EXPECT_THAT(desktop.journal.calls(), IsEmpty());
}

TEST_F(WindowSnapshot, is_not_taken_while_the_list_is_switched_off) {
    titles();
    show(L"c");
    std::vector<std::wstring> seen;
    desktop.journal.at("UnhookWinEvent", 1, [&] { seen = titles(); });
    useWindowList(false);
    EXPECT_THAT(seen, ElementsAre(L"a", L"b"));
}

TEST_F(WindowSnapshot, stays_until_it_is_asked_for_when_the_list_is_on_again) {
    const auto& snapshot = windowList();
    useWindowList(false);
    add(L"c");
    useWindowList(true);
    EXPECT_THAT(titlesOf(snapshot), ElementsAre(L"a", L"b"));
    EXPECT_THAT(titles(), ElementsAre(L"a", L"b", L"c"));
}

TEST_F(WindowSnapshot, is_read_again_when_the_list_is_switched_on) {
    show(L"c");
    titles();
    useWindowList(false);
    std::swap(desktop.windows.order[0], desktop.windows.order[2]);
    desktop.windows.find(desktop.windows.order[1])->title = L"renamed";
    desktop.journal.clear();
    useWindowList(true);
    EXPECT_EQ(desktop.journal.count("EnumWindows"), 1u);
    EXPECT_THAT(titles(), ElementsAre(L"c", L"renamed", L"a"));
    show(L"d");
    EXPECT_THAT(titles(), ElementsAre(L"c", L"renamed", L"a", L"d"));
}

TEST_F(WindowSnapshot, tells_a_new_list_from_one_of_the_same_length) {
    titles();
    useWindowList(false);
    for (const HWND window : desktop.windows.order) {
        desktop.windows.find(window)->alive = false;
    }
    add(L"c");
    add(L"d");
    useWindowList(true);
    EXPECT_THAT(titles(), ElementsAre(L"c", L"d"));
}

TEST_F(WindowSnapshot, stays_as_it_was_read_when_the_hook_is_refused) {
    module.cleanup();
    desktop.journal.fail("SetWinEventHook");
    module.init();
    show(L"c");
    EXPECT_THAT(titles(), ElementsAre(L"a", L"b"));
}

} // namespace
} // namespace tests
