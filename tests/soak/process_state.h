#pragma once

#include <gtest/gtest.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace tests {

// What the process holds of memory and of the system. Measuring takes none of it.
class ProcessState {
public:
    struct Probe {
        const char* name;
        std::int64_t (*read)();
        bool isOfHeap; // heaps reserve memory for themselves now and then
    };

    static constexpr std::size_t probeCount = 13;
    static const std::array<Probe, probeCount> probes;

    // The state now.
    ProcessState();

    // One text for every probe that differs from the earlier state, such as "threads: 2 -> 3".
    // Those of heaps are separate: only the others are reproducible to the unit.
    std::vector<std::string> heapDifferencesFrom(const ProcessState& earlier) const {
        return differencesFrom(earlier, true);
    }
    std::vector<std::string> otherDifferencesFrom(const ProcessState& earlier) const {
        return differencesFrom(earlier, false);
    }

private:
    std::vector<std::string> differencesFrom(const ProcessState& earlier, bool ofHeaps) const;

    std::array<std::int64_t, probeCount> values{};
};

// Runs the cycle this many times, after a few runs for what is made once in the life of a process,
// and names what the process then holds more or less of. The cycles are run in ten parts: a leak
// makes the heaps grow in most of them, memory that a heap reserves for itself in one or two.
testing::AssertionResult leavesNothingBehind(int cycles, const std::function<void()>& cycle);

} // namespace tests
