#pragma once

#include "snapshot/reading.h"

#include <windows.h>

#include <exception>
#include <functional>
#include <memory>
#include <thread>

namespace vorlen::viewer {

// Reads the desktop on another thread, because WMI can be slow.
class DesktopReader {
public:
    using Read = std::function<snapshot::Reading()>;

    // When a reading is done, the window gets the message.
    DesktopReader(HWND window, UINT message, Read function);

    // Waits until no reading is being made. The desktop's windows include those of this thread:
    // messages that the other thread sends to them are answered.
    ~DesktopReader();
    DesktopReader(const DesktopReader&) = delete;
    DesktopReader& operator=(const DesktopReader&) = delete;

    bool isReading() const { return thread.joinable(); }

    // Begins a reading; to be called while none is being made.
    void start();

    // Whether there is a reading to take. Other programs can send the message at any time.
    bool isDone() const;

    // The reading, when it is done. Throws what the function has thrown.
    snapshot::Reading take();

private:
    struct CloseEvent {
        void operator()(HANDLE event) const { CloseHandle(event); }
    };

    void run();

    HWND receiver;
    UINT notification;
    Read read;
    std::unique_ptr<void, CloseEvent> done;
    snapshot::Reading reading;
    std::exception_ptr failure;
    std::thread thread;
};

} // namespace vorlen::viewer
