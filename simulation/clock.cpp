#include "simulation/clock.h"

#include <stdexcept>

namespace simulation {

Clock::Clock(Redirects& redirects, Journal& calls) : journal(calls) {
#ifdef _MSC_VER
    // Microsoft's C++ library is an image of its own: an image that uses it asks it for both.
    redirects.replace<long long()>("_Query_perf_counter", counter);
    redirects.replace<long long()>("_Query_perf_frequency", frequency);
#else
    redirects.replace<decltype(QueryPerformanceCounter)>("QueryPerformanceCounter", queryCounter);
    redirects.replace<decltype(QueryPerformanceFrequency)>("QueryPerformanceFrequency",
                                                           queryFrequency);
#endif
}

void Clock::advance(std::chrono::nanoseconds time) {
    const auto ticks = std::chrono::duration_cast<Tick>(time);
    if (ticks != time) {
        throw std::invalid_argument("the clock ticks every 100 ns");
    }
    now += ticks;
}

long long Clock::counter() {
    get().journal.enter("QueryPerformanceCounter");
    return get().now.count();
}

long long Clock::frequency() {
    get().journal.enter("QueryPerformanceFrequency");
    return Tick::period::den;
}

BOOL WINAPI Clock::queryCounter(LARGE_INTEGER* ticks) {
    ticks->QuadPart = counter();
    return TRUE;
}

BOOL WINAPI Clock::queryFrequency(LARGE_INTEGER* ticksPerSecond) {
    ticksPerSecond->QuadPart = frequency();
    return TRUE;
}

} // namespace simulation
