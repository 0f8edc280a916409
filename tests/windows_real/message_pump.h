#pragma once

#include <windows.h>

#include <chrono>
#include <functional>

namespace tests {

// Retrieves the calling thread's messages until the condition holds; false when it does not hold in
// time, which is far longer than anything takes.
inline bool pumpUntil(const std::function<bool()>& condition) {
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(60);
    while (std::chrono::steady_clock::now() < deadline) {
        MSG message;
        while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE) != FALSE) {
            DispatchMessageW(&message);
        }
        if (condition()) {
            return true;
        }
        // Not every condition comes true by a message.
        MsgWaitForMultipleObjects(0, nullptr, FALSE, 5, QS_ALLINPUT);
    }
    return false;
}

} // namespace tests
