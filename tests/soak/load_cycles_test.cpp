#include "simulation/simulated_desktop.h"
#include "tests/fixtures/display_modes.h"
#include "tests/soak/loaded_products.h"
#include "tests/soak/process_state.h"
#include "tests/support/simulation.h"
#include "tests/support/wine_test.h"

#include <optional>

namespace tests {
namespace {

// Texts are longer than what a string keeps inside itself. The first monitor is asked for in WMI,
// on a thread of its own.
void furnish(SimulatedDesktop& desktop) {
    desktop.monitors.add(display1, wideMode);
    desktop.displayPaths.add(display1, L"a kit model that some monitor carries",
                             LR"(\\?\DISPLAY#VRL0001#7&1#{e6f07b5f})");
    desktop.wmi.add(LR"(DISPLAY\VRL0001\7&1_0)", L"a serial number of some length");
    desktop.addMonitor(display2, L"the name of some other monitor", smallMode);
    desktop.windows.add(L"the title of the first window");
    desktop.windows.add(L"the title of the second window");
}

void sendEvents(SimulatedDesktop& desktop) {
    const HWND window = desktop.windows.add(L"the title of a window that comes and goes").handle;
    desktop.eventHooks.deliver(EVENT_OBJECT_SHOW, window);
    desktop.eventHooks.deliver(EVENT_OBJECT_LOCATIONCHANGE, window);
    desktop.eventHooks.deliver(EVENT_OBJECT_DESTROY, window);
}

// The service is still there when the library is unloaded, or it is not.
enum class End { cleanupAndUnload, unload };

void liveOnce(End end) {
    std::optional<LoadedProducts> products(std::in_place);
    SimulatedDesktop desktop(products->image());
    furnish(desktop);
    EXPECT_TRUE(products->initialize());
    products->useEverything(desktop.comboBoxes.add(), desktop.comboBoxes.add());
    sendEvents(desktop);
    EXPECT_EQ(desktop.journal.count("CoCreateInstance"), 1u);
    EXPECT_EQ(products->exports().getLastMonitorStatus(), 16);
    if (end == End::cleanupAndUnload) {
        products->shutdown();
    }
    products.reset();
    EXPECT_EQ(desktop.eventHooks.installed(), 0u);
}

using LoadCycles = WineTest;

TEST_F(LoadCycles, leave_nothing_behind) {
    EXPECT_TRUE(leavesNothingBehind(1'000, [] { liveOnce(End::cleanupAndUnload); }));
}

TEST_F(LoadCycles, leave_nothing_behind_without_cleanup) {
    EXPECT_TRUE(leavesNothingBehind(100, [] { liveOnce(End::unload); }));
}

} // namespace
} // namespace tests
