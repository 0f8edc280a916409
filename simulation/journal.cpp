#include "simulation/journal.h"

#include <algorithm>
#include <iterator>
#include <mutex>
#include <utility>

namespace simulation {

std::deque<Journal::Plan> Journal::takeDue(Calls& calls) {
    for (Plan& plan : calls.plans) {
        --plan.remaining;
    }
    const auto due = std::stable_partition(calls.plans.begin(), calls.plans.end(),
                                           [](const Plan& plan) { return plan.remaining > 0; });
    std::deque<Plan> result(std::make_move_iterator(due),
                            std::make_move_iterator(calls.plans.end()));
    calls.plans.erase(due, calls.plans.end());
    return result;
}

std::optional<std::int64_t> Journal::enter(const std::string& name) {
    std::deque<Plan> due;
    std::optional<std::int64_t> status;
    {
        const std::lock_guard lock(mutex);
        if (recording) {
            order.push_back(name);
        }
        Calls& calls = expected[name];
        due = takeDue(calls);
        status = calls.alwaysStatus;
    }
    // Outside the lock: an action may use the journal.
    for (const Plan& plan : due) {
        if (plan.action) {
            plan.action();
        }
        if (plan.status) {
            status = plan.status;
        }
    }
    return status;
}

std::size_t Journal::count(const std::string& name) const {
    const std::lock_guard lock(mutex);
    return static_cast<std::size_t>(std::ranges::count(order, name));
}

std::vector<std::string> Journal::calls() const {
    const std::lock_guard lock(mutex);
    return order;
}

std::vector<std::string> Journal::calls(std::initializer_list<std::string> names) const {
    const std::lock_guard lock(mutex);
    std::vector<std::string> result;
    std::copy_if(order.begin(), order.end(), std::back_inserter(result),
                 [&](const auto& call) { return std::ranges::find(names, call) != names.end(); });
    return result;
}

void Journal::clear() {
    const std::lock_guard lock(mutex);
    order.clear();
}

void Journal::stopRecording() {
    const std::lock_guard lock(mutex);
    recording = false;
}

bool Journal::isRecording() const {
    const std::lock_guard lock(mutex);
    return recording;
}

void Journal::fail(const std::string& name, std::size_t n, std::int64_t status) {
    const std::lock_guard lock(mutex);
    expected[name].plans.push_back({n, status, nullptr});
}

void Journal::failAll(const std::string& name, std::int64_t status) {
    const std::lock_guard lock(mutex);
    expected[name].alwaysStatus = status;
}

void Journal::dropPlans() {
    const std::lock_guard lock(mutex);
    expected.clear();
}

void Journal::at(const std::string& name, std::size_t n, std::function<void()> action) {
    const std::lock_guard lock(mutex);
    expected[name].plans.push_back({n, std::nullopt, std::move(action)});
}

} // namespace simulation
