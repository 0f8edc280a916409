#include "tests/soak/process_state.h"

#include "tests/soak/system_counts.h"

#include <optional>
#include <utility>

namespace tests {

const std::array<ProcessState::Probe, ProcessState::probeCount> ProcessState::probes = {{
    {"blocks of the C library's heap", cHeapBlocks, true},
    {"bytes of the C library's heap", cHeapBytes, true},
    {"blocks of the process heap", processHeapBlocks, true},
    {"bytes of the process heap", processHeapBytes, true},
    {"committed private memory", committedPrivateMemory, true},
    {"handles", validHandles, false},
    {"handles by the system's count", systemHandleCount, false},
    {"next user object", nextUserObject, false},
    {"user objects by the system's count", systemUserObjectCount, false},
    {"thread slots", takenThreadSlots, false},
    {"fiber slots", takenFiberSlots, false},
    {"threads", threadCount, false},
    {"loaded images", loadedImages, false},
}};

ProcessState::ProcessState() {
    for (std::size_t i = 0; i < probeCount; ++i) {
        values[i] = probes[i].read();
    }
}

std::vector<std::string> ProcessState::differencesFrom(const ProcessState& earlier,
                                                       bool ofHeaps) const {
    std::vector<std::string> differences;
    for (std::size_t i = 0; i < probeCount; ++i) {
        if (probes[i].isOfHeap == ofHeaps && values[i] != earlier.values[i]) {
            differences.push_back(std::string(probes[i].name) + ": " +
                                  std::to_string(earlier.values[i]) + " -> " +
                                  std::to_string(values[i]));
        }
    }
    return differences;
}

namespace {

void run(int cycles, const std::function<void()>& cycle) {
    for (int i = 0; i < cycles; ++i) {
        cycle();
    }
}

constexpr int parts = 10;
using States = std::array<std::optional<ProcessState>, parts + 1>;

std::vector<std::string> lastingDifferences(const States& states) {
    constexpr int changesAllowed = 2;
    int changes = 0;
    for (std::size_t part = 0; part < parts; ++part) {
        changes += states[part + 1]->heapDifferencesFrom(*states[part]).empty() ? 0 : 1;
    }
    std::vector<std::string> differences = states.back()->otherDifferencesFrom(*states.front());
    if (changes > changesAllowed) {
        for (std::string& difference : states.back()->heapDifferencesFrom(*states.front())) {
            differences.push_back(std::move(difference));
        }
    }
    return differences;
}

} // namespace

testing::AssertionResult leavesNothingBehind(int cycles, const std::function<void()>& cycle) {
    run(20, cycle);
    States states; // take no memory themselves
    for (int part = 0; part < parts; ++part) {
        states[static_cast<std::size_t>(part)].emplace();
        run(cycles / parts, cycle);
    }
    states.back().emplace();

    testing::AssertionResult result = testing::AssertionSuccess();
    const std::vector<std::string> differences = lastingDifferences(states);
    if (!differences.empty()) {
        result = testing::AssertionFailure();
    }
    for (const std::string& difference : differences) {
        result << difference << '\n';
    }
    return result;
}

} // namespace tests
