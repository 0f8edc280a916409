#pragma once

#include <windows.h>

#include <cstddef>
#include <functional>
#include <vector>

namespace bench {

// Something that is timed.
struct Subject {
    std::function<void()> work;

    // Run before each sample, and not timed. The work is then done so often in one sample.
    std::function<void()> prepare = nullptr;
    std::size_t repetitions = 1;

    // Whether one sample does the work once although nothing has to be prepared: for work that
    // takes long enough for the clock as it is, where a trial run would only cost time.
    bool once = false;
};

// Nanoseconds that each subject takes for its work once, as the median of many samples. The
// subjects take turns, so that what disturbs the machine disturbs them alike. A subject that needs
// no preparation does its work so often in a sample that the clock's resolution does not show,
// unless it says that once is enough.
std::vector<double> medians(std::vector<Subject> subjects, std::size_t samples);

// The time that the work takes once.
double nanosecondsOf(const std::function<void()>& work);

// How often the image asks for memory during the work.
std::size_t allocationsOf(HMODULE image, const std::function<void()>& work);

double median(std::vector<double> values);

// Keeps the compiler from leaving out what nobody reads.
void use(const void* data);

} // namespace bench
