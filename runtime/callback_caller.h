#pragma once

#include "platform/thread_slot.h"
#include "runtime/logger.h"

#include <atomic>
#include <string>

namespace vorlen::log {

// Hands lines to debug callbacks, so that nothing a callback does gets in the way of logging. Any
// thread.
class CallbackCaller {
public:
    // Null is never called, and no callback is called while one runs on the same thread: one that
    // logs would not come to an end. What it throws is dropped, and said on standard error the
    // first time.
    void call(DebugCallback callback, level_enum level, const std::string& message);

private:
    void complainOnce(const std::string& what);

    using Calling = ThreadSlot<CallbackCaller>;

    Calling calling; // set on threads that are inside a callback
    std::atomic_flag hasComplained;
};

} // namespace vorlen::log
