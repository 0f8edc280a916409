#pragma once

#include "platform/locks.h"

#include <cstddef>
#include <cstdint>
#include <deque>
#include <functional>
#include <initializer_list>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace simulation {

// Records the calls of the code under test, on any thread, by name and in order, and holds the
// failures and actions that a test plans for later calls.
//
// A plan counts the calls of its name from the moment it is made: n = 1 is the next call.
class Journal {
public:
    // Called by the replacements of platform functions: records the call and runs the actions that
    // are planned for it, which may throw if the caller allows it. Returns the status with which
    // the call has to fail, or nothing when it has to do its work.
    std::optional<std::int64_t> enter(const std::string& name);

    std::size_t count(const std::string& name) const;

    // All calls in order; with names, only the calls of these names.
    std::vector<std::string> calls() const;
    std::vector<std::string> calls(std::initializer_list<std::string> names) const;

    // Removes the recorded calls and keeps the plans.
    void clear();

    // Records no call from now on, for a desktop that is used without end. The plans stay.
    void stopRecording();
    bool isRecording() const;

    // Makes the n-th call from now fail. The status is the result of functions that return a
    // status or a number; functions with a BOOL result return FALSE.
    void fail(const std::string& name, std::size_t n = 1, std::int64_t status = 0);

    // The same for every call from now on.
    void failAll(const std::string& name, std::int64_t status = 0);

    // Removes the plans for calls that have not been made.
    void dropPlans();

    // Runs the action at the n-th call from now, before the call does its work.
    void at(const std::string& name, std::size_t n, std::function<void()> action);

private:
    struct Plan {
        std::size_t remaining;
        std::optional<std::int64_t> status;
        std::function<void()> action;
    };

    struct Calls {
        std::deque<Plan> plans;
        std::optional<std::int64_t> alwaysStatus;
    };

    std::deque<Plan> takeDue(Calls& calls);

    mutable vorlen::Mutex mutex;
    bool recording = true;
    std::vector<std::string> order;
    std::map<std::string, Calls> expected;
};

} // namespace simulation
