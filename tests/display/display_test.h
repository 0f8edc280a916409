#pragma once

#include "simulation/simulated_desktop.h"
#include "tests/fixtures/display_modes.h"
#include "tests/support/simulation.h"

#include <windows.h>

#include <gtest/gtest.h>

namespace tests {

// A test of what lies below the exports: the objects of the library are linked into the test
// program, whose own imports are redirected.
class DisplayTest : public testing::Test {
protected:
    SimulatedDesktop desktop{GetModuleHandleW(nullptr), SimulatedDesktop::windowFunctions};
};

} // namespace tests
