#pragma once

#include "simulation/simulated_desktop.h"
#include "tests/fixtures/log_recorder.h"
#include "tests/fixtures/module_under_test.h"
#include "tests/fixtures/recording_runtime/core_calls.h"
#include "tests/support/simulation.h"
#include "tests/sweeps/failing_imports.h"

#include <windows.h>

#include <chrono>
#include <cstddef>
#include <vector>

namespace tests {

// The shipped library on a simulated desktop with two monitors, one of them the kit's, that WMI
// knows, three windows that are capturable, and a fourth that is not there yet.
class SweepWorld {
public:
    SweepWorld();
    ~SweepWorld();
    SweepWorld(const SweepWorld&) = delete;
    SweepWorld& operator=(const SweepWorld&) = delete;

    // Makes the desktop as it was at first, and the service with a combo box for each list.
    void start();

    // Gives the monitors device paths that WMI has not been asked about yet.
    void makeIdentificationsUnknown();
    void letListGrowStale() { desktop.clock.advance(std::chrono::milliseconds(500)); }

    // Ends the service; nothing of it may be left.
    void stop();

    // That lists, records and combo box agree, at any time: see the implementation.
    void expectAgreement();

    // That every answer is right once nothing fails; makes a service when there is not one yet.
    void expectRightAnswers();

    const Exports& exports() const { return *module.exports; }
    const vorlen::MonitorWrapper& table() const { return module.monitorWrapper(); }
    const vorlen::WindowEnumWrapper& lists() const { return module.windowEnumWrapper(); }

    ModuleUnderTest module;
    SimulatedDesktop desktop{module.image()};
    CoreCalls core{module.image(), desktop.journal};
    LogRecorder log{module.image(), desktop.journal};
    FailingImports imports{module.image(), desktop.journal};

    HWND lateWindow;
    HWND windowBox;
    HWND monitorBox;

    // Whether the window box is registered with the live list, and has got every message.
    bool windowBoxFollows = false;

private:
    void expectRightMonitors();
    void expectRightWindows();
    std::vector<HWND> listedWindows() const;

    std::size_t lastInstance = 0;
};

} // namespace tests
