#pragma once

#include "platform/image.h"
#include "platform/last_error.h"

#include <windows.h>

#include <utility>

// Owns a window-event hook. Releasing it leaves the thread's last-error value as it was. Windows
// lets only the thread that installed a hook release it: a hook that is released on another thread
// stays until that thread ends, and keeps this image loaded for good.
class EventHook {
public:
    EventHook() = default;
    explicit EventHook(HWINEVENTHOOK installed) : hook(installed) {}
    ~EventHook() { Release(); }
    EventHook(const EventHook&) = delete;
    EventHook& operator=(const EventHook&) = delete;

    EventHook(EventHook&& other) noexcept : hook(std::exchange(other.hook, nullptr)) {}
    EventHook& operator=(EventHook&& other) noexcept {
        if (this != &other) {
            Release();
            hook = std::exchange(other.hook, nullptr);
        }
        return *this;
    }

private:
    void Release() {
        if (hook != nullptr) {
            const LastErrorKeeper lastErrorKeeper;
            if (UnhookWinEvent(hook) == FALSE) {
                pinThisImage(); // Windows may still call the hook's procedure
            }
        }
    }

    HWINEVENTHOOK hook = nullptr; // null also when the installation failed
};
