#pragma once

#include "tests/fixtures/log_recorder.h"
#include "tests/fixtures/module_test.h"

#include <cstdint>
#include <string>

namespace tests {

// The severities as the lines of a check carry them.
inline constexpr int debugLevel = 1;
inline constexpr int infoLevel = 2;
inline constexpr int criticalLevel = 5;

inline constexpr DisplayMode uhdAt60{.width = 3840, .height = 2160, .frequency = 60};
inline constexpr DisplayMode fullHdAt60{.width = 1920, .height = 1080, .frequency = 60};

// A test of the status check of the shipped library. The runtime recognises what carries "Vorlen"
// in its name.
class StatusCheckTest : public ModuleTest {
protected:
    StatusCheckTest() { module.runtime.makeModelKnown("Vorlen"); }

    SimulatedMonitor& addKitMonitor(const DisplayMode& mode,
                                    const std::wstring& deviceName = LR"(\\.\DISPLAY1)") {
        return desktop.addMonitor(deviceName, L"Vorlen One", mode);
    }

    SimulatedMonitor& addOtherMonitor(const DisplayMode& mode,
                                      const std::wstring& deviceName = LR"(\\.\DISPLAY1)") {
        return desktop.addMonitor(deviceName, L"Office", mode);
    }

    bool check() const { return module.exports->checkMonitorStatus(); }
    std::int32_t status() const { return module.exports->getLastMonitorStatus(); }

    // The device name of the monitor that was judged last; empty when there is none.
    std::wstring judged() const {
        MonitorListItem item{};
        return module.exports->getCheckedMonitor(&item) ? item.deviceName : L"";
    }

    LogRecorder log{module.image(), desktop.journal};
};

} // namespace tests
