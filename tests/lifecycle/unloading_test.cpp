#include "tests/support/allocations.h"
#include "tests/support/module_test.h"

#include <gmock/gmock.h>

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

TEST_F(Unloading, lets_the_library_be_loaded_and_used_again) {
    module.unload();
    module.load();
    EXPECT_EQ(module.exports->getMonitorData(), nullptr);
    EXPECT_EQ(module.windowEnumWrapper().getMonitorHandle(0), nullptr);
    module.init();
    EXPECT_NE(module.exports->getMonitorData(), nullptr);
}

enum class End { cleanupAndUnload, unload };

// The blocks that a life of the service leaves behind once the library is gone.
std::size_t blocksLeftAfter(End end) {
    ModuleUnderTest module;
    SimulatedDesktop desktop(module.image());
    desktop.addMonitor(display1, L"Model A", wideMode);
    desktop.addMonitor(display2, L"Model B", smallMode);

    const Allocations allocations({module.image(), module.runtimeImage()});
    module.init();
    EXPECT_EQ(module.exports->getMonitorList(nullptr, 0), 2);
    if (end == End::cleanupAndUnload) {
        module.cleanup();
    }
    module.unload();
    return allocations.outstanding();
}

TEST(UnloadedLibrary, gives_back_as_much_memory_with_a_service_as_after_cleanup) {
    EXPECT_EQ(blocksLeftAfter(End::unload), blocksLeftAfter(End::cleanupAndUnload));
}

} // namespace
} // namespace tests
