#pragma once

#include "platform/thread_slot.h"
#include "runtime/logger.h"

#include <atomic>
#include <string>

namespace vorlen::log {

// Calls debug callbacks with log lines. Nothing that a callback does can disturb logging. Any
// thread.
class CallbackCaller {
public:
    // Does nothing when the callback is null, or when a callback is running on the calling thread:
    // a callback that logs would never return. Exceptions of the callback are dropped; the first
    // one is reported on standard error.
    void call(DebugCallback callback, level_enum level, const std::string& message);

private:
    void complainOnce(const std::string& what);

    using Calling = ThreadSlot<CallbackCaller>;

    Calling calling; // set on threads that run a callback
    std::atomic_flag hasComplained;
};

} // namespace vorlen::log
