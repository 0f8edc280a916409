#pragma once

#include <chrono>

namespace vorlen::tool {

// A timer for repeated work. The caller passes the current time.
class RepeatingTimer {
public:
    using Clock = std::chrono::steady_clock;

    RepeatingTimer(Clock::time_point start, Clock::duration length)
        : due(start + length), period(length) {}

    // Whether a whole period has passed since the start or since the last call that returned true.
    bool hasExpired(Clock::time_point now) {
        if (now < due) {
            return false;
        }
        due = now + period;
        return true;
    }

private:
    Clock::time_point due;
    Clock::duration period;
};

} // namespace vorlen::tool
