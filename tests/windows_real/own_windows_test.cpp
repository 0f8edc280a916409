#include "tests/windows_real/real_windows_test.h"

#include <atomic>
#include <thread>

namespace tests {
namespace {

// Windows of the process itself, on another thread than the library's: their titles are asked for
// by messages that this thread has to process.
class OwnWindow : public RealWindowsTest {
protected:
    ~OwnWindow() override {
        UnhookWinEvent(listener);
        DestroyWindow(window);
    }

    // Whether another thread waits for this one to process a message that it has sent.
    static bool isAskedInTime() {
        constexpr DWORD deadline = 60'000; // milliseconds
        return MsgWaitForMultipleObjects(0, nullptr, FALSE, deadline, QS_SENDMESSAGE) ==
               WAIT_OBJECT_0;
    }

    HWND window = CreateWindowExW(0, L"STATIC", L"own", WS_POPUP, 10, 10, 50, 50, nullptr, nullptr,
                                  nullptr, nullptr);

private:
    static void CALLBACK ignoreEvent(HWINEVENTHOOK, DWORD, HWND, LONG, LONG, DWORD, DWORD) {}

    // Wine sends no event from a thread that has not noticed that another one listens: its own hook
    // keeps it aware.
    HWINEVENTHOOK listener =
        SetWinEventHook(EVENT_MIN, EVENT_MAX, nullptr, ignoreEvent, GetCurrentProcessId(),
                        GetCurrentThreadId(), WINEVENT_OUTOFCONTEXT);
};

// Promise (Threads and callbacks): A window of the host whose thread processes no messages holds up
// init until it does.
TEST_F(OwnWindow, holds_up_init_until_its_thread_processes_messages) {
    ASSERT_NE(window, nullptr);
    std::atomic<bool> initialized = false;
    std::thread serviceThread([&] {
        module.init();
        initialized = true;
        module.cleanup();
    });
    EXPECT_TRUE(isAskedInTime());
    EXPECT_FALSE(initialized);
    EXPECT_TRUE(pumpUntil([&] { return initialized.load(); }));
    serviceThread.join();
}

TEST_F(OwnWindow, holds_up_an_event_until_its_thread_processes_messages) {
    ASSERT_NE(window, nullptr);
    std::atomic<bool> initialized = false;
    std::atomic<bool> listed = false;
    std::thread serviceThread([&] {
        module.init();
        initialized = true;
        listed = pumpUntil([&] { return isListed(window); });
        module.cleanup();
    });
    EXPECT_TRUE(pumpUntil([&] { return initialized.load(); }));
    SetWindowLongW(window, GWL_STYLE, static_cast<LONG>(WS_POPUP | WS_VISIBLE));
    NotifyWinEvent(EVENT_OBJECT_SHOW, window, OBJID_WINDOW, CHILDID_SELF);
    EXPECT_TRUE(isAskedInTime());
    EXPECT_FALSE(listed);
    EXPECT_TRUE(pumpUntil([&] { return listed.load(); }));
    serviceThread.join();
}

} // namespace
} // namespace tests
