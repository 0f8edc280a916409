#include "tests/acceptance/facts/window_thread.h"

#include "tests/fixtures/message_pump.h"

#include <chrono>

namespace tests {

namespace {

constexpr UINT runTask = WM_APP;

struct Task {
    const std::function<void()>& function;
    Signal ended;
};

// The thread uses the objects of the waiting one. When it hangs, the time limit of the program ends
// both.
void waitWithoutLimit(const Signal& signal) {
    signal.waitFor(std::chrono::milliseconds(INFINITE));
}

void CALLBACK ignoreEvent(HWINEVENTHOOK, DWORD, HWND, LONG, LONG, DWORD, DWORD) {}

} // namespace

WindowThread::WindowThread() : thread([this] { processMessages(); }) {
    waitWithoutLimit(started);
}

WindowThread::~WindowThread() {
    PostThreadMessageW(number, WM_QUIT, 0, 0);
    thread.join();
}

void WindowThread::run(const std::function<void()>& task) const {
    Task order{task, {}};
    ASSERT_NE(PostThreadMessageW(number, runTask, 0, reinterpret_cast<LPARAM>(&order)), FALSE);
    waitWithoutLimit(order.ended);
}

HWND WindowThread::createWindow(const wchar_t* title, const wchar_t* className) const {
    HWND window = nullptr;
    run([&] {
        window = CreateWindowExW(0, className, title, WS_POPUP, 10, 10, 50, 50, nullptr, nullptr,
                                 GetModuleHandleW(nullptr), nullptr);
    });
    EXPECT_NE(window, nullptr) << "error " << GetLastError();
    return window;
}

void WindowThread::processMessages() {
    makeMessageQueue();
    number = GetCurrentThreadId();
    // Wine sends no event from a thread that has not noticed that another one listens: its own hook
    // keeps it aware.
    const HWINEVENTHOOK listener =
        SetWinEventHook(EVENT_MIN, EVENT_MAX, nullptr, ignoreEvent, GetCurrentProcessId(), number,
                        WINEVENT_OUTOFCONTEXT);
    started.raise();
    MSG message;
    while (GetMessageW(&message, nullptr, 0, 0) > 0) {
        if (message.hwnd == nullptr && message.message == runTask) {
            Task& task = *reinterpret_cast<Task*>(message.lParam);
            task.function();
            task.ended.raise();
        } else {
            DispatchMessageW(&message);
        }
    }
    UnhookWinEvent(listener);
}

} // namespace tests
