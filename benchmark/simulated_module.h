#pragma once

#include "simulation/simulated_desktop.h"
#include "tests/fixtures/display_modes.h"
#include "tests/fixtures/module_under_test.h"

#include <string>

namespace bench {

// The library on a simulated desktop. The destructor unloads the library before the desktop is
// destroyed.
struct SimulatedModule {
    ~SimulatedModule() { module.unload(); }

    // Adds monitors with device paths of displays, so that the library queries WMI for them.
    void addMonitors(std::size_t count) {
        for (std::size_t i = 1; i <= count; ++i) {
            const std::wstring number = std::to_wstring(i);
            const std::wstring deviceName = LR"(\\.\DISPLAY)" + number;
            desktop.monitors.add(deviceName, tests::wideMode);
            desktop.displayPaths.add(deviceName, L"Model " + number,
                                     LR"(\\?\DISPLAY#MODEL)" + number + L"#5&1&0&UID1#{e6f07b5f}");
            desktop.wmi.add(LR"(DISPLAY\MODEL)" + number + LR"(\5&1&0&UID1_0)", L"SERIAL" + number);
        }
    }

    tests::ModuleUnderTest module;
    simulation::SimulatedDesktop desktop{module.image()};
};

} // namespace bench
