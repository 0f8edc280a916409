#include "tests/fixtures/module_test.h"
#include "tests/support/allocations.h"

#include <new>
#include <stdexcept>

namespace tests {
namespace {

// Each call and each request for memory of init fails in FaultSweep and AllocationSweep.
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
        EXPECT_EQ(desktop.eventHooks.installed(), 0u);
    }
};

// Promise (Loading, init, cleanup and unloading): An init that fails lets its exception pass,
// leaves neither a service nor an event hook, and can be repeated.
TEST_F(FailingInit, leaves_nothing_behind_and_can_be_repeated) {
    desktop.journal.at("VorlenCore::AddMonitorItem", 2,
                       [] { throw std::runtime_error("refused by the runtime"); });
    EXPECT_THROW(module.init(), std::runtime_error);
    expectNothingLeft();
    module.init();
    EXPECT_EQ(module.exports->getMonitorList(nullptr, 0), 2);
    EXPECT_EQ(module.runtime.monitorItems().size(), 2u);
}

TEST_F(FailingInit, throws_only_when_the_systems_enumeration_has_ended) {
    Allocations allocations({module.image()});
    desktop.journal.at("EnumDisplayMonitors", 1, [&] { allocations.failRequest(1); });
    // The simulated enumeration reports a callback that stops it or throws.
    EXPECT_THROW(module.init(), std::bad_alloc);
    EXPECT_TRUE(allocations.hasFailed());
    expectNothingLeft();
}

} // namespace
} // namespace tests
