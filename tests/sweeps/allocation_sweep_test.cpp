#include "tests/fixtures/service_members.h"
#include "tests/support/allocations.h"
#include "tests/sweeps/failures.h"
#include "tests/sweeps/operations.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <cstddef>
#include <string>

namespace tests {
namespace {

using testing::SizeIs;

// Lets each request for memory of the library fail, one at a time.
class AllocationSweep : public testing::TestWithParam<Operation> {
protected:
    const Operation& operation() const { return GetParam(); }

    // The n-th request fails. Returns whether it was made.
    bool failsAt(std::size_t n) {
        prepare(world, operation());
        vorlen::MonitorData* const service = world.module.exports->getMonitorData();
        const auto updated = service != nullptr ? lastMonitorUpdate(*service) : never;

        bool failed = false;
        const std::string outcome = runWithout(n, failed);
        if (failed) {
            expectPromised(outcome);
            if (service != nullptr && service == world.module.exports->getMonitorData()) {
                const bool complete =
                    world.desktop.journal.count("VorlenCore::AddMonitorItem") == 2;
                EXPECT_EQ(lastMonitorUpdate(*service) != updated, complete)
                    << "the time of a refresh is noted when it is complete, and only then";
            }
        } else {
            EXPECT_EQ(outcome, "returned");
        }
        world.expectAgreement();
        if (outcome == "returned") {
            world.letListGrowStale();
        }
        world.expectRightAnswers();
        world.stop();
        return failed;
    }

    std::string runWithout(std::size_t n, bool& failed) {
        Allocations allocations({world.module.image()});
        allocations.failRequest(n);
        const std::string outcome = outcomeOf([this] { operation().run(world); });
        failed = allocations.hasFailed();
        return outcome;
    }

    void expectPromised(const std::string& outcome) {
        if (operation().isEvent) {
            EXPECT_EQ(outcome, "returned") << "an exception crossed the system's frames";
            EXPECT_THAT(world.log.lines, SizeIs(1)) << "the failure was not logged";
        } else {
            EXPECT_EQ(outcome, "std::bad_alloc");
        }
    }

    static constexpr std::chrono::steady_clock::time_point never{};
    SweepWorld world;
};

TEST_P(AllocationSweep, ends_as_promised_whichever_request_for_memory_fails) {
    for (std::size_t n = 1;; ++n) {
        SCOPED_TRACE("request " + std::to_string(n));
        if (!failsAt(n) || HasFailure()) {
            break;
        }
    }
}

INSTANTIATE_TEST_SUITE_P(of, AllocationSweep, testing::ValuesIn(operations()),
                         [](const auto& swept) { return swept.param.name; });

} // namespace
} // namespace tests
