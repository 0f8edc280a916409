#include "tests/support/allocations.h"
#include "tests/fixtures/module_test.h"

#include <gmock/gmock.h>

#include <functional>
#include <new>
#include <stdexcept>

namespace tests {
namespace {

using testing::Each;
using testing::Gt;
using testing::Le;
using testing::SizeIs;

class FailingInit : public ModuleTest {
protected:
    void SetUp() override {
        desktop.addMonitor(display1, L"A name that needs memory of its own", wideMode);
        desktop.addMonitor(display2, L"Another name that needs memory", smallMode);
    }

    // Neither a service nor a list of the thread is there, and the hook is released.
    void expectNothingLeft() {
        EXPECT_EQ(module.exports->getMonitorData(), nullptr);
        const std::size_t enumerations = desktop.journal.count("EnumDisplayMonitors");
        module.windowEnumWrapper().updateMonitorList();
        EXPECT_EQ(desktop.journal.count("EnumDisplayMonitors"), enumerations)
            << "a monitor list is still bound to the thread";
        EXPECT_EQ(desktop.journal.count("SetWinEventHook"),
                  desktop.journal.count("UnhookWinEvent"));
    }

    // Lets init fail at each request for memory in turn, and counts what stays taken each time.
    std::vector<std::size_t> blocksLeftByFailures() {
        std::vector<std::size_t> blocks;
        while (true) {
            Allocations allocations({module.image(), module.runtimeImage()});
            allocations.failRequest(blocks.size() + 1);
            try {
                module.init();
                module.cleanup();
                return blocks;
            } catch (const std::bad_alloc&) {
            }
            module.runtime.resetCore();
            blocks.push_back(allocations.outstanding());
        }
    }

    void expectInitWorks() {
        module.init();
        EXPECT_EQ(module.exports->getMonitorList(nullptr, 0), 2);
        EXPECT_EQ(module.runtime.monitorItems().size(), 2u);
    }
};

struct Failure {
    const char* call;
    std::size_t n;
};

class InitFailsAt : public FailingInit, public testing::WithParamInterface<Failure> {};

TEST_P(InitFailsAt, a_call_of_the_runtime_and_leaves_nothing_behind) {
    desktop.journal.at(std::string("VorlenCore::") + GetParam().call, GetParam().n,
                       [] { throw std::runtime_error("refused by the runtime"); });
    EXPECT_THROW(module.init(), std::runtime_error);
    expectNothingLeft();
    expectInitWorks();
}

INSTANTIATE_TEST_SUITE_P(Calls, InitFailsAt,
                         testing::Values(Failure{"Instance", 1}, Failure{"ClearMonitorList", 1},
                                         Failure{"Instance", 2}, Failure{"AddMonitorItem", 1},
                                         Failure{"Instance", 3}, Failure{"AddMonitorItem", 2}),
                         [](const auto& failure) {
                             return failure.param.call + std::to_string(failure.param.n);
                         });

TEST_F(FailingInit, leaves_nothing_behind_whichever_request_for_memory_fails) {
    std::size_t request = 1;
    for (bool failed = true; failed; ++request) {
        Allocations allocations({module.image()});
        allocations.failRequest(request);
        try {
            module.init();
        } catch (const std::bad_alloc&) {
            allocations.failRequest(0);
            expectNothingLeft();
            continue;
        }
        failed = allocations.hasFailed();
        module.cleanup();
        ASSERT_FALSE(failed) << "init went on without the memory of request " << request;
    }
    EXPECT_GT(request, 10u) << "init takes more memory than that";
    expectInitWorks();
}

TEST_F(FailingInit, gives_back_what_it_took_whichever_request_for_memory_fails) {
    // Each image takes some memory once, when it throws its first exception.
    blocksLeftByFailures();
    const std::vector<std::size_t> blocks = blocksLeftByFailures();
    EXPECT_THAT(blocks, SizeIs(Gt(10u))) << "init takes more memory than that";
    // The exception itself: it is given back by the C++ library of this program.
    EXPECT_THAT(blocks, Each(Le(1u)));
}

TEST_F(FailingInit, passes_on_a_failure_inside_the_systems_enumeration_after_it_has_ended) {
    Allocations allocations({module.image()});
    desktop.journal.at("EnumDisplayMonitors", 1, [&] { allocations.failRequest(1); });
    // The simulated enumeration would note a callback that stops it or throws.
    EXPECT_THROW(module.init(), std::bad_alloc);
    EXPECT_TRUE(allocations.hasFailed());
    expectNothingLeft();
}

} // namespace
} // namespace tests
