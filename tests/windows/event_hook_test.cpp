#include "platform/owners.h"
#include "tests/windows/windows_test.h"

#include <type_traits>
#include <utility>

namespace tests {
namespace {

using vorlen::EventHook;

static_assert(!std::is_copy_constructible_v<EventHook> && !std::is_copy_assignable_v<EventHook>);

void CALLBACK ignoreEvent(HWINEVENTHOOK, DWORD, HWND, LONG, LONG, DWORD, DWORD) {}

class HookOwner : public WindowsTest {
protected:
    static EventHook install() {
        return EventHook(SetWinEventHook(EVENT_OBJECT_DESTROY, EVENT_OBJECT_UNCLOAKED, nullptr,
                                         ignoreEvent, 0, 0, WINEVENT_OUTOFCONTEXT));
    }

    bool released(std::size_t index) const { return desktop.eventHooks.all.at(index).released; }
};

TEST_F(HookOwner, releases_its_hook_and_leaves_the_last_error_as_it_was) {
    {
        const EventHook hook = install();
        EXPECT_FALSE(released(0));
        SetLastError(77);
    }
    EXPECT_EQ(GetLastError(), 77u);
    EXPECT_TRUE(released(0));
}

TEST_F(HookOwner, releases_a_hook_that_is_replaced_and_leaves_the_last_error_as_it_was) {
    EventHook hook = install();
    EventHook next = install();
    SetLastError(77);
    hook = std::move(next);
    EXPECT_EQ(GetLastError(), 77u);
    EXPECT_TRUE(released(0));
    EXPECT_FALSE(released(1));
}

TEST_F(HookOwner, leaves_the_last_error_as_it_was_also_when_the_release_fails) {
    {
        const EventHook hook = install();
        desktop.journal.fail("UnhookWinEvent");
        desktop.eventHooks.leftInstalled = 1;
        SetLastError(77);
    }
    EXPECT_EQ(GetLastError(), 77u);
    EXPECT_EQ(desktop.journal.count("UnhookWinEvent"), 1u);
}

TEST_F(HookOwner, keeps_the_image_loaded_when_the_release_fails) {
    { const EventHook hook = install(); }
    EXPECT_EQ(desktop.eventHooks.imagePins, 0u);
    {
        const EventHook hook = install();
        desktop.journal.fail("UnhookWinEvent");
        desktop.eventHooks.leftInstalled = 1;
    }
    EXPECT_EQ(desktop.eventHooks.imagePins, 1u);
}

TEST_F(HookOwner, releases_nothing_when_it_owns_nothing) {
    {
        const EventHook none;
        const EventHook refused{nullptr};
        EventHook replaced;
        replaced = EventHook();
    }
    EXPECT_EQ(desktop.journal.count("UnhookWinEvent"), 0u);
}

TEST_F(HookOwner, hands_its_hook_on_when_it_is_moved) {
    EventHook first = install();
    {
        const EventHook second(std::move(first));
        EXPECT_EQ(desktop.eventHooks.installed(), 1u);
    }
    EXPECT_TRUE(released(0));
}

TEST_F(HookOwner, keeps_its_hook_when_it_is_moved_to_itself) {
    EventHook hook = install();
    EventHook& same = hook;
    hook = std::move(same);
    EXPECT_EQ(desktop.journal.count("UnhookWinEvent"), 0u);
}

} // namespace
} // namespace tests
