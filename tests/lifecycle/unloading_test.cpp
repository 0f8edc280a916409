#include "tests/fixtures/module_test.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <stdexcept>
#include <vector>

namespace tests {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// That no memory, handle or slot stays behind is compared after every test.
class Unloading : public RunningModuleTest {};

// Promise (Loading, init, cleanup and unloading): Unloading the library destroys a service that
// still exists, and releases its event hook.
TEST_F(Unloading, destroys_a_live_service) {
    module.unload();
    EXPECT_THAT(desktop.windowCalls(), ElementsAre("UnhookWinEvent"));
}

TEST_F(Unloading, destroys_nothing_twice_after_cleanup) {
    module.cleanup();
    desktop.journal.clear();
    module.unload();
    EXPECT_THAT(desktop.windowCalls(), IsEmpty());
}

// Not on the fixture's desktop: the library that is loaded again is not behind its redirects.
TEST(LoadedLibrary, can_be_unloaded_and_used_again) {
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

// All slots of the process for values that are given back when their thread or fiber ends, as
// libraries use them.
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

TEST(LoadedLibrary, can_throw_in_a_process_without_free_fiber_slots) {
    const TakenFiberSlots taken;
    ASSERT_GT(taken.count(), 0u);
    ModuleUnderTest module;
    const SimulatedDesktop desktop(module.image());
    module.init();
    EXPECT_THROW(module.exports->setVorlenMonitorModelName("", -1), std::length_error);
    EXPECT_THROW(module.exports->setVorlenMonitorModelName("", -2), std::length_error);
    module.unload();
}

} // namespace
} // namespace tests
