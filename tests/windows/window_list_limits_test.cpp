#include "tests/windows/windows_test.h"

#include <dwmapi.h>
#include <gmock/gmock.h>

namespace tests {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// What the list misses, because it goes by three events alone; vorlen/monitor.h says so to hosts.
class WindowListLimits : public WindowsTest {};

TEST_F(WindowListLimits, a_destroyed_caret_takes_its_window_off_until_it_is_shown_again) {
    const SimulatedWindow& editor = desktop.windows.add(L"editor");
    desktop.windows.add(L"other");
    const WindowList list;
    desktop.eventHooks.deliver(destroyed, editor.handle, OBJID_CARET, CHILDID_SELF);
    EXPECT_THAT(titlesOf(list), ElementsAre(L"other"));
    desktop.eventHooks.deliver(shown, editor.handle);
    EXPECT_THAT(titlesOf(list), ElementsAre(L"other", L"editor"));
}

TEST_F(WindowListLimits, a_window_that_gets_its_title_after_it_was_shown_is_not_added) {
    const WindowList list;
    SimulatedWindow& window = desktop.windows.add(L"");
    desktop.eventHooks.deliver(shown, window.handle);
    window.title = L"a";
    desktop.eventHooks.deliver(renamed, window.handle);
    EXPECT_THAT(titlesOf(list), IsEmpty());
}

TEST_F(WindowListLimits, a_window_that_is_enabled_after_it_was_shown_is_not_added) {
    const WindowList list;
    SimulatedWindow& window = desktop.windows.add(L"a");
    window.style |= WS_DISABLED;
    desktop.eventHooks.deliver(shown, window.handle);
    window.style &= ~WS_DISABLED;
    desktop.eventHooks.deliver(EVENT_OBJECT_STATECHANGE, window.handle);
    EXPECT_THAT(titlesOf(list), IsEmpty());
}

TEST_F(WindowListLimits, a_handle_that_is_used_again_unreported_keeps_the_old_title) {
    SimulatedWindow& window = desktop.windows.add(L"old");
    const WindowList list;
    window.title = L"new";
    window.className = L"Another class";
    desktop.eventHooks.deliver(shown, window.handle);
    EXPECT_THAT(titlesOf(list), ElementsAre(L"old"));
}

TEST_F(WindowListLimits, an_ordinary_window_of_another_virtual_desktop_is_listed) {
    desktop.windows.add(L"elsewhere").cloaked = DWM_CLOAKED_SHELL;
    const WindowList list;
    EXPECT_THAT(titlesOf(list), ElementsAre(L"elsewhere"));
}

} // namespace
} // namespace tests
