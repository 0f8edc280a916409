#include "benchmark/measurement.h"

#include "tests/support/allocations.h"

#include <algorithm>
#include <chrono>
#include <iterator>

namespace bench {

namespace {

constexpr double shortestSample = 200'000; // nanoseconds

double sample(const Subject& subject) {
    if (subject.prepare) {
        subject.prepare();
    }
    return nanosecondsOf([&] {
               for (std::size_t i = 0; i < subject.repetitions; ++i) {
                   subject.work();
               }
           }) /
           static_cast<double>(subject.repetitions);
}

void calibrate(Subject& subject) {
    if (subject.prepare || subject.once) {
        return;
    }
    while (sample(subject) * static_cast<double>(subject.repetitions) < shortestSample) {
        subject.repetitions *= 2;
    }
}

} // namespace

double nanosecondsOf(const std::function<void()>& work) {
    using Clock = std::chrono::steady_clock;
    const auto start = Clock::now();
    work();
    return std::chrono::duration<double, std::nano>(Clock::now() - start).count();
}

std::size_t allocationsOf(HMODULE image, const std::function<void()>& work) {
    const tests::Allocations allocations({image});
    work();
    return allocations.requests();
}

double median(std::vector<double> values) {
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

std::vector<double> medians(std::vector<Subject> subjects, std::size_t samples) {
    for (Subject& subject : subjects) {
        calibrate(subject);
    }
    std::vector<std::vector<double>> taken(subjects.size());
    for (std::size_t turn = 0; turn < samples; ++turn) {
        for (std::size_t i = 0; i < subjects.size(); ++i) {
            taken[i].push_back(sample(subjects[i]));
        }
    }
    std::vector<double> result;
    std::ranges::transform(taken, std::back_inserter(result), median);
    return result;
}

const void* volatile used = nullptr;

void use(const void* data) {
    used = data;
}

} // namespace bench
