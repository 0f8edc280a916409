#pragma once

#include "simulation/journal.h"
#include "tests/support/simulation.h"

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

namespace tests {

// How an operation of the library ended: "returned", or the exception that left it, such as
// "std::bad_alloc" or "_com_error 0x8007000e".
std::string outcomeOf(const std::function<void()>& operation);

// One way in which a call can fail, and how an operation then ends.
struct FailureMode {
    std::string name;
    std::function<void(Journal& journal, const std::string& call, std::size_t n)> plan;
    std::string outcome;
};

// A call that can fail: its name in the journal, the import behind it (empty for a method of a COM
// object) and the ways.
struct FailingCall {
    std::string call;
    std::string import;
    std::vector<FailureMode> modes;
};

// Every call of the library that can fail.
std::vector<FailingCall> failingCalls();

} // namespace tests
