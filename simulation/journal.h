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

// What the code under test called, by name and in order, and what a test wants to happen at certain
// calls. Calls of any thread are noted.
//
// Calls to come are counted per name from the moment a test speaks of them: 1 is the next one.
class Journal {
public:
    // For the replacements of platform functions: notes the call and runs the actions that were
    // asked for at it, which may throw where the caller allows it. Returns the status that the call
    // is to fail with, or nothing when it is to do its work.
    std::optional<std::int64_t> enter(const std::string& name);

    std::size_t count(const std::string& name) const;

    // All calls in order; with names, those of these names only.
    std::vector<std::string> calls() const;
    std::vector<std::string> calls(std::initializer_list<std::string> names) const;

    // Forgets the calls made so far, not what is to happen at later ones.
    void clear();

    // Lets the n-th call from now fail. The status is what the function returns, for functions that
    // return one; functions with a BOOL result return FALSE.
    void fail(const std::string& name, std::size_t n = 1, std::int64_t status = 0);

    // The same for every call from now on.
    void failAll(const std::string& name, std::int64_t status = 0);

    // Forgets what was to happen at calls that have not been made.
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

    mutable Mutex mutex;
    std::vector<std::string> order;
    std::map<std::string, Calls> expected;
};

} // namespace simulation
