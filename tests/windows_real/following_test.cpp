#include "tests/support/signal.h"
#include "tests/windows_real/real_windows_test.h"

#include <thread>

namespace tests {
namespace {

TEST_F(RealWindowsTest, lists_the_windows_that_are_there_at_the_start) {
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

TEST_F(RealWindowsTest, follows_a_window_of_another_program) {
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

// Promise (getWindowList): The list follows the desktop only while the service thread retrieves
// messages. It handles then what has happened in between.
TEST_F(RealWindowsTest, follows_the_desktop_only_while_it_retrieves_messages) {
    const HWND seeded = program.createShown(L"seeded");
    HWND shown = nullptr;
    Signal started;
    Signal shownAfterStart;
    std::thread service([&] {
        makeMessageQueue();
        module.init();
        started.raise();
        shownAfterStart.wait();
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
        shown = program.createShown(L"shown after the start");
        EXPECT_TRUE(witness.sees(shown));
    }
    shownAfterStart.raise();
    service.join();
}

TEST_F(RealWindowsTest, calls_nothing_of_a_library_that_was_unloaded) {
    module.init();
    module.unload();
    const Witness witness;
    const HWND window = program.createShown(L"late");
    EXPECT_TRUE(witness.sees(window));
}

TEST_F(RealWindowsTest, gives_the_reasons_of_windows_of_another_program) {
    const auto reasonOf = [this](HWND window) {
        return module.exports->getReasonNotCapturable(window);
    };
    const HWND capturable = program.createShown(L"capturable");
    EXPECT_EQ(reasonOf(capturable), nullptr);
    program.destroy(capturable);
    EXPECT_STREQ(reasonOf(capturable), "no title");
    EXPECT_STREQ(reasonOf(program.createShown(L"")), "no title");
    EXPECT_STREQ(reasonOf(program.create(L"hidden")), "not visible");
    const DWORD style = WS_POPUP | WS_VISIBLE;
    EXPECT_STREQ(reasonOf(program.create(L"disabled", style | WS_DISABLED)), "disabled");
    EXPECT_STREQ(reasonOf(program.create(L"tool", style, WS_EX_TOOLWINDOW)), "tool window");

    const HWND parent = CreateWindowW(L"STATIC", L"parent", WS_POPUP | WS_VISIBLE, 0, 0, 50, 50,
                                      nullptr, nullptr, nullptr, nullptr);
    EXPECT_STREQ(reasonOf(CreateWindowW(L"STATIC", L"part", WS_CHILD | WS_VISIBLE, 0, 0, 10, 10,
                                        parent, nullptr, nullptr, nullptr)),
                 "not a root window");
    DestroyWindow(parent);
}

} // namespace
} // namespace tests
