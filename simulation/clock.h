#pragma once

#include "simulation/current.h"
#include "simulation/journal.h"
#include "simulation/redirects.h"

#include <windows.h>

#include <chrono>

namespace simulation {

// The time of the performance counter and therefore of std::chrono::steady_clock. It does not
// change until a test advances it. The counter runs at 10 MHz: a tick is 100 ns.
class Clock : private Current<Clock> {
public:
    using Tick = std::chrono::duration<std::int64_t, std::ratio<1, 10'000'000>>;

    Clock(Redirects& redirects, Journal& calls);

    void advance(std::chrono::nanoseconds time);

private:
    friend class Current<Clock>;
    static long long counter();
    static long long frequency();
    static BOOL WINAPI queryCounter(LARGE_INTEGER* ticks);
    static BOOL WINAPI queryFrequency(LARGE_INTEGER* ticksPerSecond);

    Journal& journal;
    Tick now = std::chrono::hours(1);
};

} // namespace simulation
