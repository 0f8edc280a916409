#include "tests/fixtures/window_module_test.h"
#include "tests/support/allocations.h"
#include "tests/support/other_thread.h"

#include <gmock/gmock.h>

#include <new>
#include <utility>

namespace tests {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// restartWindowList, with two windows listed.
class WindowListRestart : public TwoWindowsTest {
protected:
    bool restart() const { return module.exports->restartWindowList(); }

    HWND liveWindow(std::int32_t index) const {
        return module.windowEnumWrapper().getWindowHandle(index);
    }
};

TEST_F(WindowListRestart, releases_the_hook_reads_the_desktop_and_hooks_again) {
    EXPECT_TRUE(restart());
    EXPECT_THAT(desktop.journal.calls({"UnhookWinEvent", "EnumWindows", "SetWinEventHook"}),
                ElementsAre("UnhookWinEvent", "EnumWindows", "SetWinEventHook"));
    show(L"c");
    destroy(desktop.windows.order[0]);
    EXPECT_THAT(titles(), ElementsAre(L"b", L"c"));
}

// Promise (diagnostics.h): `restartWindowList` makes a new list of the windows that are capturable
// now, in the system's order and with their present titles. It shows what no event has reported.
TEST_F(WindowListRestart, shows_what_no_event_has_reported) {
    desktop.windows.find(desktop.windows.order[0])->title = L"renamed";
    desktop.windows.find(desktop.windows.order[1])->visible = false;
    add(L"c");
    std::swap(desktop.windows.order[0], desktop.windows.order[2]);
    EXPECT_THAT(titles(), ElementsAre(L"a", L"b"));
    EXPECT_TRUE(restart());
    EXPECT_THAT(titles(), ElementsAre(L"c", L"renamed"));
}

TEST_F(WindowListRestart, lists_a_window_again_whose_caret_was_destroyed) {
    desktop.eventHooks.deliver(EVENT_OBJECT_DESTROY, desktop.windows.order[0], OBJID_CARET);
    EXPECT_THAT(titles(), ElementsAre(L"b"));
    EXPECT_TRUE(restart());
    EXPECT_THAT(titles(), ElementsAre(L"a", L"b"));
}

// Promise (diagnostics.h): After `restartWindowList`, combo boxes keep their entries and are not
// updated until they are registered again.
TEST_F(WindowListRestart, leaves_combo_boxes_until_they_are_registered_again) {
    const HWND box = makeComboBox();
    add(L"c");
    EXPECT_TRUE(restart());
    show(L"d");
    EXPECT_THAT(desktop.comboBoxes.entries(box), ElementsAre(L"a", L"b"));
    module.windowEnumWrapper().registerWindowComboBox(box);
    show(L"e");
    EXPECT_THAT(desktop.comboBoxes.entries(box), ElementsAre(L"a", L"b", L"c", L"d", L"e"));
}

TEST_F(WindowListRestart, does_nothing_while_the_list_is_off) {
    useWindowList(false);
    desktop.journal.clear();
    EXPECT_FALSE(restart());
    EXPECT_THAT(desktop.journal.calls(), IsEmpty());
    EXPECT_EQ(liveWindow(0), nullptr);
}

TEST_F(WindowListRestart, does_nothing_on_another_thread) {
    EXPECT_FALSE(onAnotherThread([this] { return restart(); }));
    EXPECT_THAT(desktop.journal.calls(), IsEmpty());
    EXPECT_NE(liveWindow(0), nullptr);
}

TEST_F(WindowListRestart, can_be_repeated_when_the_hook_was_refused) {
    desktop.journal.fail("SetWinEventHook");
    add(L"c");
    EXPECT_TRUE(restart());
    show(L"d");
    EXPECT_THAT(titles(), ElementsAre(L"a", L"b", L"c"));
    EXPECT_TRUE(restart());
    show(L"e");
    EXPECT_THAT(titles(), ElementsAre(L"a", L"b", L"c", L"d", L"e"));
}

// Promise (diagnostics.h): When memory is exhausted, `restartWindowList` throws `std::bad_alloc`
// and leaves the list off: `getWindowList` returns its last records.
TEST_F(WindowListRestart, leaves_the_list_off_when_memory_is_exhausted) {
    const auto before = titles();
    add(L"c");
    {
        Allocations allocations({module.image()});
        allocations.failRequest(1);
        EXPECT_THROW(restart(), std::bad_alloc);
    }
    EXPECT_EQ(desktop.eventHooks.installed(), 0u);
    EXPECT_EQ(liveWindow(0), nullptr);
    EXPECT_EQ(titles(), before);
    EXPECT_FALSE(restart());
    useWindowList(true);
    EXPECT_THAT(titles(), ElementsAre(L"a", L"b", L"c"));
}

} // namespace
} // namespace tests
