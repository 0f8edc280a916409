#pragma once

#include "tests/support/signal.h"

#include <windows.h>

#include <functional>
#include <thread>

namespace tests {

// A thread with windows, which processes messages while no task runs.
class WindowThread {
public:
    WindowThread();
    ~WindowThread();
    WindowThread(const WindowThread&) = delete;
    WindowThread& operator=(const WindowThread&) = delete;

    // Runs the task, which must not throw, on the thread, and returns when it has ended, however
    // long that takes: the task may use the caller's objects.
    void run(const std::function<void()>& task) const;

    // A hidden window of the thread without a frame, which the thread destroys at its end.
    HWND createWindow(const wchar_t* title, const wchar_t* className = L"STATIC") const;

    DWORD id() const { return number; }

private:
    void processMessages();

    Signal started;
    DWORD number = 0;
    std::thread thread;
};

} // namespace tests
