#include "tests/sweeps/failures.h"
#include "tests/sweeps/operations.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <optional>
#include <string>
#include <vector>

namespace tests {
namespace {

using testing::SizeIs;

// Lets each call of the library fail, one at a time.
class FaultSweep : public testing::TestWithParam<Operation> {
protected:
    const Operation& operation() const { return GetParam(); }

    std::string run() {
        return outcomeOf([this] { operation().run(world); });
    }

    std::size_t callsWithoutFailure(const std::string& call) {
        if (!counted) {
            prepare(world, operation());
            EXPECT_EQ(run(), "returned");
            counted = world.desktop.journal.calls();
            world.expectRightAnswers();
            world.stop();
        }
        return static_cast<std::size_t>(std::count(counted->begin(), counted->end(), call));
    }

    void expectPromised(const FailureMode& mode, const std::string& outcome) {
        const bool thrown = mode.outcome != "returned";
        if (operation().isEvent && thrown) {
            EXPECT_EQ(outcome, "returned") << "an exception crossed the system's frames";
            EXPECT_THAT(world.log.lines, SizeIs(1)) << "the failure was not logged";
        } else {
            EXPECT_EQ(outcome, mode.outcome);
        }
    }

    // The n-th call fails. Returns whether it was made.
    bool failsAt(const FailingCall& failing, const FailureMode& mode, std::size_t n) {
        prepare(world, operation());
        mode.plan(world.desktop.journal, failing.call, n);
        const std::string outcome = run();
        const bool made = world.desktop.journal.count(failing.call) >= n;
        world.desktop.journal.dropPlans();
        if (made) {
            expectPromised(mode, outcome);
        } else {
            EXPECT_EQ(outcome, "returned");
        }
        if (failing.call == "UnhookWinEvent" && made) {
            forgetHookThatWasKept();
        }
        if (failing.call == "SendMessageW") {
            world.windowBoxFollows = false; // it has missed a message
        }
        if (outcome == "returned") {
            // What was read with a failure stays until the list is stale.
            world.makeIdentificationsUnknown();
            world.letListGrowStale();
        }
        world.expectRightAnswers();
        world.stop();
        return made;
    }

    // The system did not release the hook: the desktop must not expect its release.
    void forgetHookThatWasKept() {
        auto& hooks = world.desktop.eventHooks.all;
        const auto kept = std::find_if(hooks.begin(), hooks.end(),
                                       [](const auto& hook) { return !hook.released; });
        ASSERT_NE(kept, hooks.end());
        kept->released = true;
    }

    SweepWorld world;
    std::optional<std::vector<std::string>> counted;
};

TEST_P(FaultSweep, ends_as_promised_whichever_call_fails) {
    for (const FailingCall& failing : failingCalls()) {
        if (callsWithoutFailure(failing.call) == 0) {
            continue;
        }
        for (const FailureMode& mode : failing.modes) {
            for (std::size_t n = 1;; ++n) {
                SCOPED_TRACE(failing.call + " " + mode.name + " at call " + std::to_string(n));
                if (!failsAt(failing, mode, n) || HasFailure()) {
                    break;
                }
            }
        }
    }
}

INSTANTIATE_TEST_SUITE_P(of, FaultSweep, testing::ValuesIn(operations()),
                         [](const auto& swept) { return swept.param.name; });

// What is done once in the life of the library fails in a library of its own each time.
TEST(FaultSweepOfFirstInit, ends_as_promised_whichever_call_fails) {
    for (const FailingCall& failing : failingCalls()) {
        for (const FailureMode& mode : failing.modes) {
            for (std::size_t n = 1;; ++n) {
                SCOPED_TRACE(failing.call + " " + mode.name + " at call " + std::to_string(n));
                SweepWorld world;
                world.makeIdentificationsUnknown();
                mode.plan(world.desktop.journal, failing.call, n);
                const std::string outcome = outcomeOf([&] { world.module.init(); });
                const bool made = world.desktop.journal.count(failing.call) >= n;
                world.desktop.journal.dropPlans();
                EXPECT_EQ(outcome, made ? mode.outcome : "returned");
                if (outcome == "returned") {
                    world.makeIdentificationsUnknown();
                    world.letListGrowStale();
                }
                world.expectRightAnswers();
                world.module.unload();
                if (!made) {
                    break;
                }
            }
        }
    }
}

} // namespace
} // namespace tests
