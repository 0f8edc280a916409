#include "tests/support/allocations.h"
#include "tests/windows/window_module_test.h"

#include <gmock/gmock.h>

#include <new>
#include <stdexcept>
#include <utility>

namespace tests {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class WindowTracking : public TwoWindowsTest {};

TEST_F(WindowTracking, that_is_on_is_not_started_again) {
    desktop.windows.find(desktop.windows.order[0])->title = L"new";
    useWindowList(true);
    EXPECT_THAT(desktop.journal.calls(), IsEmpty());
    EXPECT_THAT(titles(), ElementsAre(L"a", L"b"));
}

TEST_F(WindowTracking, that_is_on_keeps_its_combo_boxes_when_it_is_switched_on) {
    const HWND box = makeComboBox();
    useWindowList(true);
    show(L"c");
    EXPECT_THAT(desktop.comboBoxes.entries(box), ElementsAre(L"a", L"b", L"c"));
}

TEST_F(WindowTracking, releases_its_hook_and_list_when_it_is_switched_off) {
    useWindowList(false);
    EXPECT_THAT(desktop.journal.calls(), ElementsAre("UnhookWinEvent"));
    EXPECT_EQ(module.windowEnumWrapper().getWindowHandle(0), nullptr);
}

TEST_F(WindowTracking, leaves_the_last_snapshot_when_it_is_switched_off) {
    const auto before = titles();
    useWindowList(false);
    destroy(desktop.windows.order[0]);
    EXPECT_EQ(titles(), before);
    EXPECT_EQ(titles(), before);
}

TEST_F(WindowTracking, leaves_handles_and_class_names_when_it_is_switched_off) {
    titles();
    useWindowList(false);
    destroy(desktop.windows.order[0]);
    ASSERT_EQ(windowList().size(), 2u);
    for (std::size_t i = 0; i < 2; ++i) {
        EXPECT_EQ(windowList()[i].hwnd, desktop.windows.order[i]);
        EXPECT_EQ(windowList()[i].className, L"ApplicationWindow");
    }
}

TEST_F(WindowTracking, takes_no_snapshot_of_its_own_when_it_is_switched_off) {
    titles();
    show(L"c");
    useWindowList(false);
    EXPECT_THAT(titles(), ElementsAre(L"a", L"b"));
}

TEST_F(WindowTracking, counts_as_off_already_while_it_is_being_switched_off) {
    titles();
    show(L"c");
    std::vector<std::wstring> seen;
    desktop.journal.at("UnhookWinEvent", 1, [&] { seen = titles(); });
    useWindowList(false);
    EXPECT_THAT(seen, ElementsAre(L"a", L"b"));
}

TEST_F(WindowTracking, that_is_off_asks_the_system_nothing) {
    useWindowList(false);
    desktop.journal.clear();
    titles();
    useWindowList(false);
    titles();
    EXPECT_THAT(desktop.journal.calls(), IsEmpty());
}

TEST_F(WindowTracking, reads_the_desktop_anew_when_it_is_switched_on_again) {
    show(L"c");
    titles();
    useWindowList(false);
    std::swap(desktop.windows.order[0], desktop.windows.order[2]);
    desktop.windows.find(desktop.windows.order[1])->title = L"renamed";
    desktop.journal.clear();
    useWindowList(true);
    EXPECT_EQ(desktop.journal.count("EnumWindows"), 1u);
    EXPECT_EQ(desktop.journal.count("SetWinEventHook"), 1u);
    EXPECT_THAT(titles(), ElementsAre(L"c", L"renamed", L"a"));
}

TEST_F(WindowTracking, leaves_the_last_snapshot_until_it_is_asked_for_when_it_is_switched_on) {
    const auto& snapshot = windowList();
    useWindowList(false);
    add(L"c");
    useWindowList(true);
    EXPECT_THAT(titlesOf(snapshot), ElementsAre(L"a", L"b"));
    EXPECT_THAT(titles(), ElementsAre(L"a", L"b", L"c"));
}

TEST_F(WindowTracking, tells_a_new_list_from_the_old_one_by_more_than_its_length) {
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

TEST_F(WindowTracking, follows_the_desktop_once_it_is_on_again) {
    useWindowList(false);
    useWindowList(true);
    show(L"c");
    EXPECT_THAT(titles(), ElementsAre(L"a", L"b", L"c"));
    EXPECT_EQ(desktop.eventHooks.installed(), 1u);
}

TEST_F(WindowTracking, forgets_its_combo_boxes_when_it_is_switched_off) {
    const HWND box = makeComboBox();
    useWindowList(false);
    useWindowList(true);
    show(L"c");
    EXPECT_THAT(desktop.comboBoxes.entries(box), ElementsAre(L"a", L"b"));
}

TEST_F(WindowTracking, that_cannot_start_for_want_of_memory_can_be_tried_again) {
    const auto before = titles();
    useWindowList(false);
    add(L"c");
    {
        Allocations allocations({module.image()});
        allocations.failRequest(3);
        EXPECT_THROW(useWindowList(true), std::bad_alloc);
    }
    EXPECT_EQ(desktop.eventHooks.installed(), 0u);
    EXPECT_EQ(module.windowEnumWrapper().getWindowHandle(0), nullptr);
    EXPECT_EQ(titles(), before);
    useWindowList(true);
    EXPECT_THAT(titles(), ElementsAre(L"a", L"b", L"c"));
}

TEST_F(WindowTracking, ends_with_the_service) {
    module.cleanup();
    EXPECT_EQ(desktop.eventHooks.installed(), 0u);
    EXPECT_EQ(desktop.journal.count("UnhookWinEvent"), 1u);
    module.init();
    EXPECT_EQ(desktop.eventHooks.installed(), 1u);
}

TEST_F(WindowTracking, that_is_off_ends_with_the_service_without_a_second_release) {
    useWindowList(false);
    module.cleanup();
    EXPECT_EQ(desktop.journal.count("UnhookWinEvent"), 1u);
}

TEST_F(WindowTracking, ends_when_the_library_is_unloaded) {
    module.unload();
    EXPECT_EQ(desktop.eventHooks.installed(), 0u);
}

class FailedStart : public WindowModuleTest {};

TEST_F(FailedStart, of_the_service_leaves_no_hook_and_no_list) {
    add(L"a");
    desktop.journal.at("VorlenCore::ClearMonitorList", 1,
                       [] { throw std::runtime_error("planned"); });
    EXPECT_THROW(module.init(), std::runtime_error);
    EXPECT_EQ(desktop.eventHooks.installed(), 0u);
    EXPECT_EQ(module.windowEnumWrapper().getWindowHandle(0), nullptr);
    module.init();
    EXPECT_THAT(titles(), ElementsAre(L"a"));
}

TEST_F(FailedStart, of_the_hook_leaves_a_list_that_stays_as_it_was_read) {
    add(L"a");
    desktop.journal.fail("SetWinEventHook");
    module.init();
    show(L"b");
    EXPECT_THAT(titles(), ElementsAre(L"a"));
    module.cleanup();
    EXPECT_EQ(desktop.journal.count("UnhookWinEvent"), 0u);
}

} // namespace
} // namespace tests
