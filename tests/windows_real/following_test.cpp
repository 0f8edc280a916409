#include "tests/support/signal.h"
#include "tests/windows_real/real_windows_test.h"

#include <thread>

namespace tests {
namespace {

class ListOfRealWindows : public RealWindowsTest {};

TEST_F(ListOfRealWindows, holds_the_windows_of_another_program_that_are_there_at_the_start) {
    const HWND visible = program.createShown(L"visible");
    const HWND hidden = program.create(L"hidden");
    const HWND untitled = program.createShown(L"");
    module.init();
    ASSERT_TRUE(isListed(visible));
    EXPECT_EQ(find(visible)->title, L"visible");
    EXPECT_EQ(find(visible)->className, OtherProgram::className);
    EXPECT_FALSE(isListed(hidden));
    EXPECT_FALSE(isListed(untitled));
}

TEST_F(ListOfRealWindows, follows_another_program_through_a_window_s_life) {
    module.init();
    const HWND window = program.create(L"first title");
    receiveAllEvents();
    EXPECT_FALSE(isListed(window));

    program.show(window);
    EXPECT_TRUE(becomesListed(window));
    EXPECT_EQ(titleOf(window), L"first title");

    program.rename(window, L"second title");
    program.hide(window);
    receiveAllEvents();
    EXPECT_EQ(titleOf(window), L"first title");

    program.destroy(window);
    EXPECT_TRUE(leavesTheList(window));
}

TEST_F(ListOfRealWindows, has_them_in_the_order_in_which_they_appear) {
    module.init();
    const HWND early = program.create(L"made first");
    const HWND late = program.create(L"made second");
    program.show(late);
    program.show(early);
    EXPECT_TRUE(becomesListed(early));
    EXPECT_LT(positionOf(late), positionOf(early));
}

TEST_F(ListOfRealWindows, has_each_once_however_often_it_is_shown) {
    module.init();
    const HWND window = program.createShown(L"a");
    program.show(window);
    program.show(window);
    receiveAllEvents();
    program.destroy(window);
    EXPECT_TRUE(leavesTheList(window));
}

TEST_F(ListOfRealWindows, has_titles_of_any_language_and_length) {
    const std::wstring longTitle = std::wstring(199, L't') + L'!';
    const std::wstring foreignTitle = L"\u00E9\u4E2D\xD83D\xDE00";
    const HWND seeded = program.createShown(longTitle);
    module.init();
    const HWND shown = program.createShown(foreignTitle);
    EXPECT_TRUE(becomesListed(shown));
    EXPECT_EQ(titleOf(seeded), longTitle);
    EXPECT_EQ(titleOf(shown), foreignTitle);
}

TEST_F(ListOfRealWindows, leaves_out_disabled_and_tool_windows) {
    module.init();
    const HWND disabled = program.create(L"disabled", WS_POPUP | WS_DISABLED);
    const HWND tool = program.create(L"tool", WS_POPUP, WS_EX_TOOLWINDOW);
    program.show(disabled);
    program.show(tool);
    receiveAllEvents();
    EXPECT_FALSE(isListed(disabled));
    EXPECT_FALSE(isListed(tool));
}

TEST_F(ListOfRealWindows, is_read_anew_when_it_is_switched_on_again) {
    module.init();
    const HWND window = program.createShown(L"old");
    EXPECT_TRUE(becomesListed(window));
    module.monitorWrapper().useWindowList(false);
    program.rename(window, L"new");
    module.monitorWrapper().useWindowList(true);
    EXPECT_EQ(titleOf(window), L"new");
}

// Sees the events of the other program on a thread of its own choice.
class Witness {
public:
    Witness()
        : hook(SetWinEventHook(EVENT_OBJECT_SHOW, EVENT_OBJECT_SHOW, nullptr, note, 0, 0,
                               WINEVENT_OUTOFCONTEXT)) {
        last = nullptr;
    }
    ~Witness() { UnhookWinEvent(hook); }
    Witness(const Witness&) = delete;
    Witness& operator=(const Witness&) = delete;

    bool sees(HWND window) const {
        return pumpUntil([=] { return last == window; });
    }

private:
    static void CALLBACK note(HWINEVENTHOOK, DWORD, HWND window, LONG object, LONG, DWORD, DWORD) {
        if (object == OBJID_WINDOW) {
            last = window;
        }
    }

    static inline HWND last = nullptr;
    HWINEVENTHOOK hook;
};

// Wine drops events for a thread that never had to do with messages.
void makeMessageQueue() {
    MSG message;
    PeekMessageW(&message, nullptr, WM_USER, WM_USER, PM_NOREMOVE);
}

TEST_F(ListOfRealWindows, stays_as_it_was_read_on_a_thread_that_retrieves_no_messages) {
    const HWND seeded = program.createShown(L"seeded");
    HWND shown = nullptr;
    Signal started;
    Signal shownMeanwhile;
    std::thread service([&] {
        makeMessageQueue();
        module.init();
        started.raise();
        shownMeanwhile.wait();
        EXPECT_FALSE(isListed(shown));
        EXPECT_TRUE(isListed(seeded));
        // From now on the thread does retrieve messages.
        EXPECT_TRUE(becomesListed(shown));
        EXPECT_TRUE(leavesTheList(seeded));
        module.cleanup();
    });
    started.wait();
    {
        const Witness witness;
        program.destroy(seeded);
        shown = program.createShown(L"shown meanwhile");
        EXPECT_TRUE(witness.sees(shown));
    }
    shownMeanwhile.raise();
    service.join();
}

TEST_F(ListOfRealWindows, does_not_call_the_library_any_more_once_it_was_unloaded) {
    module.init();
    module.unload();
    const Witness witness;
    const HWND window = program.createShown(L"late");
    EXPECT_TRUE(witness.sees(window));
}

class ReasonOfRealWindows : public RealWindowsTest {
protected:
    const char* reasonOf(HWND window) const { return module.exports->getReasonNotCapturable(window); }
};

TEST_F(ReasonOfRealWindows, tells_why_a_window_of_another_program_is_left_out) {
    EXPECT_EQ(reasonOf(program.createShown(L"capturable")), nullptr);
    EXPECT_STREQ(reasonOf(program.createShown(L"")), "no title");
    EXPECT_STREQ(reasonOf(program.create(L"hidden")), "not visible");
    const DWORD style = WS_POPUP | WS_VISIBLE;
    EXPECT_STREQ(reasonOf(program.create(L"disabled", style | WS_DISABLED)), "disabled");
    EXPECT_STREQ(reasonOf(program.create(L"tool", style, WS_EX_TOOLWINDOW)), "tool window");
}

TEST_F(ReasonOfRealWindows, tells_of_a_destroyed_window_that_it_has_no_title) {
    const HWND window = program.createShown(L"a");
    program.destroy(window);
    EXPECT_STREQ(reasonOf(window), "no title");
}

TEST_F(ReasonOfRealWindows, tells_of_a_part_of_a_window_that_it_is_no_root_window) {
    const HWND parent = CreateWindowW(L"STATIC", L"parent", WS_POPUP | WS_VISIBLE, 0, 0, 50, 50,
                                      nullptr, nullptr, nullptr, nullptr);
    const HWND part = CreateWindowW(L"STATIC", L"part", WS_CHILD | WS_VISIBLE, 0, 0, 10, 10, parent,
                                    nullptr, nullptr, nullptr);
    EXPECT_STREQ(reasonOf(part), "not a root window");
    EXPECT_EQ(reasonOf(parent), nullptr);
    DestroyWindow(parent);
}

} // namespace
} // namespace tests
