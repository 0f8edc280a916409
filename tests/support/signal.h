#pragma once

#include <windows.h>

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <stdexcept>

namespace tests {

// Something that happens once, and that other threads wait for. Windows' own event: in this
// toolchain's library, waits of several threads for different latches lose wake-ups.
class Signal {
public:
    Signal() : event(CreateEventW(nullptr, TRUE, FALSE, nullptr)) {
        if (event == nullptr) {
            throw std::runtime_error("an event cannot be made");
        }
    }
    ~Signal() { CloseHandle(event); }
    Signal(const Signal&) = delete;
    Signal& operator=(const Signal&) = delete;

    void raise() { SetEvent(event); }

    // Waits until it has happened or the time is over. Returns whether it has happened.
    bool waitFor(std::chrono::milliseconds time) const {
        return WaitForSingleObject(event, static_cast<DWORD>(time.count())) == WAIT_OBJECT_0;
    }

    // For what must happen.
    void wait() const { EXPECT_TRUE(waitFor(std::chrono::seconds(30))) << "it did not happen"; }

private:
    HANDLE event;
};

// Lets this many threads go on together.
class Gate {
public:
    explicit Gate(int threadCount) : missing(threadCount) {}

    void pass() {
        if (--missing == 0) {
            complete.raise();
        }
        complete.wait();
    }

private:
    std::atomic<int> missing;
    Signal complete;
};

} // namespace tests
