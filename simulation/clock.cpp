#include "simulation/clock.h"

#include <stdexcept>

namespace simulation {

Clock::Clock(Redirects& redirects, Journal& calls) : journal(calls) {
    redirects.replace<decltype(QueryPerformanceCounter)>("QueryPerformanceCounter", queryCounter);
    redirects.replace<decltype(QueryPerformanceFrequency)>("QueryPerformanceFrequency",
                                                           queryFrequency);
}

void Clock::advance(std::chrono::nanoseconds time) {
    const auto ticks = std::chrono::duration_cast<Tick>(time);
    if (ticks != time) {
        throw std::invalid_argument("the clock ticks every 100 ns");
    }
    now += ticks;
}

BOOL WINAPI Clock::queryCounter(LARGE_INTEGER* counter) {
    get().journal.enter("QueryPerformanceCounter");
    counter->QuadPart = get().now.count();
    return TRUE;
}

BOOL WINAPI Clock::queryFrequency(LARGE_INTEGER* frequency) {
    get().journal.enter("QueryPerformanceFrequency");
    frequency->QuadPart = Tick::period::den;
    return TRUE;
}

} // namespace simulation
