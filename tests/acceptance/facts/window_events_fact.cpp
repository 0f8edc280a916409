// Facts about window events.

#include "tests/acceptance/facts/answers.h"
#include "tests/acceptance/facts/event_recorder.h"
#include "tests/acceptance/facts/finding.h"
#include "tests/acceptance/facts/window_thread.h"
#include "tests/fixtures/message_pump.h"
#include "tests/support/other_thread.h"

#include <windows.h>

#include <dwmapi.h>

#include <functional>
#include <memory>

namespace tests {
namespace {

// The hook is on the thread of the test, the windows are on another one.
class WindowEvents : public testing::Test {
protected:
    WindowEvents() { EventRecorder::forget(); }

    // Answers with the events about the window that the action, run on the thread of the windows,
    // causes.
    void answerWithEventsOf(HWND window, const std::function<void()>& action) {
        EXPECT_TRUE(recorder.receiveAll(windows, fence));
        EventRecorder::forget();
        windows.run(action);
        EXPECT_TRUE(recorder.receiveAll(windows, fence));
        answer(recorder.answerAbout(window));
        detail("all events", recorder.detailAbout(window));
    }

    HWND shownWindow() const {
        const HWND window = windows.createWindow(L"fact");
        windows.run([=] { ShowWindow(window, SW_SHOWNOACTIVATE); });
        return window;
    }

    // Answers with the events of a window that is cloaked, or of one that is uncloaked.
    void answerWithCloaking(BOOL before, BOOL after) {
        const HWND window = shownWindow();
        if (!cloak(window, before) || !recorder.receiveAll(windows, fence)) {
            return notMeasured("a program cannot cloak its window on this system");
        }
        EventRecorder::forget();
        if (!cloak(window, after)) {
            return notMeasured("a program cannot cloak its window on this system");
        }
        // The window manager may announce it on a thread of its own.
        pumpUntil([&] { return !recorder.about(window).empty(); });
        EXPECT_TRUE(recorder.receiveAll(windows, fence));
        answer(recorder.answerAbout(window));
        detail("all events", recorder.detailAbout(window));
    }

    // Whether the window then is as wanted.
    bool cloak(HWND window, BOOL wanted) const {
        windows.run([&] { DwmSetWindowAttribute(window, DWMWA_CLOAK, &wanted, sizeof(wanted)); });
        DWORD cloaked = 0;
        return SUCCEEDED(DwmGetWindowAttribute(window, DWMWA_CLOAKED, &cloaked, sizeof(cloaked))) &&
               (cloaked != 0) == (wanted != FALSE);
    }

    const WindowThread windows;
    const HWND fence = windows.createWindow(L"fence");
    const EventRecorder recorder;
};

// Fact: Which events come when a window is shown?
// Relied on by: `monitor/windows/window_list.cpp`
// Simulated: SHOW window
TEST_F(WindowEvents, of_a_shown_window) {
    const HWND window = windows.createWindow(L"fact");
    answerWithEventsOf(window, [=] { ShowWindow(window, SW_SHOWNOACTIVATE); });
}

// Fact: Which events come when a window is created visible?
// Relied on by: `monitor/windows/window_list.cpp`
// Simulated: SHOW window
TEST_F(WindowEvents, of_a_window_that_is_created_visible) {
    HWND window = nullptr;
    EXPECT_TRUE(recorder.receiveAll(windows, fence));
    windows.run([&] {
        window = CreateWindowExW(0, L"STATIC", L"fact", WS_POPUP | WS_VISIBLE, 10, 10, 50, 50,
                                 nullptr, nullptr, nullptr, nullptr);
    });
    EXPECT_TRUE(recorder.receiveAll(windows, fence));
    answer(recorder.answerAbout(window));
    detail("all events", recorder.detailAbout(window));
}

// Fact: Which events come when a window is hidden?
// Relied on by: `docs/host-guide.md`
// Simulated: HIDE window
TEST_F(WindowEvents, of_a_hidden_window) {
    const HWND window = shownWindow();
    answerWithEventsOf(window, [=] { ShowWindow(window, SW_HIDE); });
}

// Fact: Which events come when a visible window is destroyed?
// Relied on by: `monitor/windows/window_list.cpp`
// Simulated: DESTROY window
TEST_F(WindowEvents, of_a_destroyed_window) {
    const HWND window = shownWindow();
    answerWithEventsOf(window, [=] { DestroyWindow(window); });
}

// Fact: Which events come when a hidden window is destroyed?
// Relied on by: `monitor/windows/window_list.cpp`
// Simulated: DESTROY window
TEST_F(WindowEvents, of_a_destroyed_hidden_window) {
    const HWND window = windows.createWindow(L"fact");
    answerWithEventsOf(window, [=] { DestroyWindow(window); });
}

// Fact: Which events come when a window gets a text caret and shows it?
// Relied on by: `monitor/windows/window_list.cpp`
// Simulated: SHOW caret
TEST_F(WindowEvents, of_a_shown_caret) {
    const HWND window = shownWindow();
    answerWithEventsOf(window, [=] {
        CreateCaret(window, nullptr, 1, 10);
        ShowCaret(window);
    });
}

// Fact: Which events come when a window hides its text caret?
// Relied on by: `monitor/windows/window_list.cpp`
// Simulated: HIDE caret
TEST_F(WindowEvents, of_a_hidden_caret) {
    const HWND window = shownWindow();
    windows.run([=] {
        CreateCaret(window, nullptr, 1, 10);
        ShowCaret(window);
    });
    answerWithEventsOf(window, [=] { HideCaret(window); });
}

// Fact: Which events come when the text caret of a window is destroyed and the window stays?
// Relied on by: `monitor/windows/window_list.cpp`, `docs/host-guide.md`
// Simulated: DESTROY caret
TEST_F(WindowEvents, of_a_destroyed_caret) {
    const HWND window = shownWindow();
    windows.run([=] { CreateCaret(window, nullptr, 1, 10); });
    answerWithEventsOf(window, [] { DestroyCaret(); });
}

// Fact: Which events come when a window is destroyed that has a visible text caret?
// Relied on by: `monitor/windows/window_list.cpp`
// Simulated: DESTROY caret, DESTROY window
TEST_F(WindowEvents, of_a_destroyed_window_with_a_caret) {
    const HWND window = shownWindow();
    windows.run([=] {
        CreateCaret(window, nullptr, 1, 10);
        ShowCaret(window);
    });
    answerWithEventsOf(window, [=] { DestroyWindow(window); });
}

// Fact: Which events come when a program cloaks its window?
// Relied on by: `docs/host-guide.md`
// Simulated: CLOAKED window
TEST_F(WindowEvents, of_a_cloaked_window) {
    answerWithCloaking(FALSE, TRUE);
}

// Fact: Which events come when a program uncloaks its window?
// Relied on by: `monitor/windows/window_list.cpp`
// Simulated: UNCLOAKED window
TEST_F(WindowEvents, of_an_uncloaked_window) {
    answerWithCloaking(TRUE, FALSE);
}

// Fact: On which thread is the procedure of the hook called, and which thread does the event name?
// Relied on by: `monitor/windows/window_list.cpp`, `docs/architecture.md`
// Simulated: the hook's, the window's
TEST_F(WindowEvents, arrive_on_the_thread_of_the_hook) {
    windows.run([this] { announce(EVENT_OBJECT_SHOW, fence); });
    EXPECT_TRUE(recorder.receiveAll(windows, fence));
    const auto events = recorder.about(fence);
    ASSERT_FALSE(events.empty()) << "no event arrived";
    const auto& event = events.back();
    const auto nameOfThread = [this](DWORD thread) {
        return thread == GetCurrentThreadId() ? "the hook's"
               : thread == windows.id()       ? "the window's"
                                              : "another";
    };
    answer(std::string(nameOfThread(event.calledThread)) + ", " + nameOfThread(event.windowThread));
}

// Fact: In which order do the events of one thread arrive?
// Relied on by: `monitor/windows/window_list.cpp`
// Simulated: in the order of their causes
TEST_F(WindowEvents, of_one_thread_in_order) {
    constexpr LONG count = 200;
    windows.run([this] {
        for (LONG child = 1; child <= count; ++child) {
            announce(child % 2 == 0 ? EVENT_OBJECT_SHOW : EVENT_OBJECT_HIDE, fence, child);
        }
    });
    EXPECT_TRUE(recorder.receiveAll(windows, fence));
    const auto events = recorder.about(fence);
    LONG next = 1;
    for (const auto& event : events) {
        next += event.child == next ? 1 : 0;
    }
    answer(next == count + 1 ? "in the order of their causes" : "in another order");
}

// Another hook, on a thread that processes messages: when it has seen an event, so has the system.
class Witness {
public:
    Witness() {
        thread.run([this] { recorder = std::make_unique<EventRecorder>(); });
    }
    ~Witness() {
        thread.run([this] { recorder.reset(); });
    }
    Witness(const Witness&) = delete;
    Witness& operator=(const Witness&) = delete;

    bool sees(HWND window) const {
        return pumpNothingUntil([&] {
            bool seen = false;
            thread.run([&] { seen = !recorder->about(window).empty(); });
            return seen;
        });
    }

private:
    // Waits without retrieving messages of the calling thread.
    static bool pumpNothingUntil(const std::function<bool()>& condition) {
        const ULONGLONG end = GetTickCount64() + 60'000;
        while (GetTickCount64() < end) {
            if (condition()) {
                return true;
            }
            Sleep(1);
        }
        return false;
    }

    WindowThread thread;
    std::unique_ptr<EventRecorder> recorder;
};

// Fact: When is the procedure called for an event that comes while the thread of the hook retrieves
// no messages?
// Relied on by: `monitor/windows/window_list.cpp`, `docs/host-guide.md`
// Simulated: when messages are retrieved
TEST_F(WindowEvents, wait_until_messages_are_retrieved) {
    const Witness witness;
    EXPECT_TRUE(recorder.receiveAll(windows, fence));
    windows.run([this] { announce(EVENT_OBJECT_SHOW, fence); });
    ASSERT_TRUE(witness.sees(fence)) << "the event was not announced";
    const bool early = !recorder.about(fence).empty();
    EXPECT_TRUE(recorder.receiveAll(windows, fence));
    const bool later = !recorder.about(fence).empty();
    answer(early ? "at once" : later ? "when messages are retrieved" : "never");
}

// Fact: Does an event arrive that was queued before its hook was released?
// Relied on by: `monitor/windows/window_list.cpp`, `platform/owners.h`
// Simulated: no
TEST_F(WindowEvents, queued_before_the_hook_is_released) {
    const Witness witness;
    const EventRecorder released;
    EXPECT_TRUE(released.receiveAll(windows, fence));
    windows.run([this] { announce(EVENT_OBJECT_SHOW, fence); });
    ASSERT_TRUE(witness.sees(fence)) << "the event was not announced";
    released.release();
    EXPECT_TRUE(recorder.receiveAll(windows, fence));
    ASSERT_FALSE(recorder.about(fence).empty()) << "the other hook got no event";
    answer(released.about(fence).empty() ? "no" : "yes");
}

// Fact: Can another thread than that of the hook release it?
// Relied on by: `platform/owners.h`, `platform/thread_object.h`
// Simulated: no
TEST_F(WindowEvents, of_a_hook_that_another_thread_releases) {
    const EventRecorder released;
    const BOOL result = onAnotherThread([&] { return UnhookWinEvent(released.handle()); });
    EventRecorder::forget();
    windows.run([this] { announce(EVENT_OBJECT_SHOW, fence); });
    EXPECT_TRUE(recorder.receiveAll(windows, fence));
    const bool arrives = !released.about(fence).empty();
    answer(result == FALSE && arrives ? "no"
           : result != FALSE          ? "yes"
                                      : "no, but no event arrives afterwards");
}

} // namespace
} // namespace tests
