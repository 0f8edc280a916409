#include "tests/support/allocations.h"
#include "tests/fixtures/module_test.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <memory>
#include <stdexcept>
#include <vector>

namespace tests {
namespace {

using testing::ElementsAre;

class Unloading : public RunningModuleTest {};

TEST_F(Unloading, destroys_a_service_that_is_still_there) {
    module.unload();
    EXPECT_THAT(desktop.windowCalls(), ElementsAre("UnhookWinEvent"));
}

TEST_F(Unloading, after_cleanup_destroys_nothing_twice) {
    module.cleanup();
    desktop.journal.clear();
    module.unload();
    EXPECT_THAT(desktop.windowCalls(), testing::IsEmpty());
}

enum class End { cleanupAndUnload, unload };

// The blocks of memory that a life of the service leaves behind once both libraries are gone.
std::size_t blocksLeftAfter(End end) {
    auto module = std::make_unique<ModuleUnderTest>();
    SimulatedDesktop desktop(module->image());
    desktop.addMonitor(display1, L"A name that needs memory of its own", wideMode);
    desktop.addMonitor(display2, L"Another name that needs memory", smallMode);

    const Allocations allocations({module->image(), module->runtimeImage()});
    module->init();
    EXPECT_EQ(module->exports->getMonitorList(nullptr, 0), 2);
    EXPECT_GT(allocations.outstanding(), 10u);
    if (end == End::cleanupAndUnload) {
        module->cleanup();
    }
    module.reset();
    return allocations.outstanding();
}

TEST(UnloadedLibraries, can_be_loaded_and_used_again) {
    ModuleUnderTest module;
    for (int life = 1; life <= 2; ++life) {
        SCOPED_TRACE(life);
        SimulatedDesktop desktop(module.image());
        EXPECT_EQ(module.exports->getMonitorData(), nullptr);
        EXPECT_EQ(module.windowEnumWrapper().getMonitorHandle(0), nullptr);
        module.init();
        EXPECT_NE(module.exports->getMonitorData(), nullptr);
        module.unload();
        module.load();
    }
}

// What threads have in such a slot is given back when they end, so that libraries like it; a
// process has a limited number.
class TakenFiberSlots {
public:
    TakenFiberSlots() {
        for (DWORD slot = FlsAlloc(nullptr); slot != FLS_OUT_OF_INDEXES; slot = FlsAlloc(nullptr)) {
            slots.push_back(slot);
        }
    }
    ~TakenFiberSlots() { std::for_each(slots.begin(), slots.end(), FlsFree); }
    TakenFiberSlots(const TakenFiberSlots&) = delete;
    TakenFiberSlots& operator=(const TakenFiberSlots&) = delete;

    std::size_t count() const { return slots.size(); }

private:
    std::vector<DWORD> slots;
};

TEST(Libraries, throw_all_the_same_in_a_process_without_fiber_slots) {
    const TakenFiberSlots taken;
    ASSERT_GT(taken.count(), 0u);
    ModuleUnderTest module;
    const SimulatedDesktop desktop(module.image());
    module.init();
    EXPECT_THROW(module.exports->setVorlenMonitorModelName("", -1), std::length_error);
    EXPECT_THROW(module.exports->setVorlenMonitorModelName("", -2), std::length_error);
    module.unload();
}

TEST(UnloadedLibraries, leave_no_memory_behind_after_cleanup) {
    EXPECT_EQ(blocksLeftAfter(End::cleanupAndUnload), 0u);
}

TEST(UnloadedLibraries, leave_no_memory_behind_although_the_service_was_still_there) {
    EXPECT_EQ(blocksLeftAfter(End::unload), 0u);
}

} // namespace
} // namespace tests
