#pragma once

#include <windows.h>

#include <cstddef>
#include <functional>
#include <vector>

namespace bench {

// Work that is timed.
struct Subject {
    std::function<void()> work;

    // If set, runs before each sample and is not timed. One sample then does the work as often as
    // repetitions says.
    std::function<void()> prepare = nullptr;
    std::size_t repetitions = 1;

    // Whether one sample does the work once although prepare is not set: for work that takes long
    // compared with the clock's resolution.
    bool once = false;
};

// The nanoseconds that each subject's work takes once: the median of the samples. The subjects
// take turns, so that disturbances of the machine affect all of them. Without prepare and once, a
// sample repeats the work until the clock's resolution is negligible.
std::vector<double> medians(std::vector<Subject> subjects, std::size_t samples);

// The time that the work takes once.
double nanosecondsOf(const std::function<void()>& work);

// The number of allocations of the image during the work.
std::size_t allocationsOf(HMODULE image, const std::function<void()>& work);

double median(std::vector<double> values);

// Prevents the compiler from removing the computation of data that is not read.
void use(const void* data);

} // namespace bench
