#pragma once

#include "simulation/simulated_desktop.h"
#include "tests/recording_runtime/core_calls.h"
#include "tests/support/display_modes.h"
#include "tests/support/module_under_test.h"
#include "tests/support/simulation.h"

#include <gtest/gtest.h>

namespace tests {

// A test of the shipped library on an empty simulated desktop, not initialised yet. A service that
// a test leaves behind is destroyed with the library, while the desktop is still simulated.
class ModuleTest : public testing::Test {
protected:
    ~ModuleTest() override { module.unload(); }

    ModuleUnderTest module;
    SimulatedDesktop desktop{module.image()};
    CoreCalls core{module.image(), desktop.journal};
};

// The same with the service made: a desktop of three monitors, and a journal without the calls of
// the start.
class RunningModuleTest : public ModuleTest {
protected:
    void SetUp() override {
        desktop.addMonitor(display2, L"Model B", smallMode);
        desktop.addMonitor(display1, L"Model A", wideMode);
        desktop.addMonitor(display3, L"Model C", {5760, 0, 1024, 768, 59});
        module.init();
        desktop.journal.clear();
    }

    vorlen::MonitorData& service() const { return *module.exports->getMonitorData(); }
};

} // namespace tests
