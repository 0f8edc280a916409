#pragma once

#include "simulation/cloaking.h"
#include "simulation/clock.h"
#include "simulation/combo_boxes.h"
#include "simulation/display_paths.h"
#include "simulation/event_hooks.h"
#include "simulation/journal.h"
#include "simulation/monitors.h"
#include "simulation/redirects.h"
#include "simulation/windows.h"
#include "simulation/wmi.h"

#include <windows.h>

#include <set>
#include <string>

namespace simulation {

// A desktop in memory behind the imports of one image. A test adds monitors and windows and
// advances the time; the journal records every call. Empty at first. At most one at a time.
class SimulatedDesktop {
    Redirects redirects;

public:
    // The image need not import the functions in absentFunctions: a test program that links only
    // some components of the module imports only a part of the platform.
    explicit SimulatedDesktop(HMODULE image, std::set<std::string> absentFunctions = {});

    // Adds a monitor and its display path. WMI is not queried for the path: its device path is not
    // that of a display.
    SimulatedMonitor& addMonitor(const std::wstring& deviceName, const std::wstring& friendlyName,
                                 const DisplayMode& mode);

    // The recorded calls of displayFunctions, in order.
    std::vector<std::string> displayCalls() const;

    // The recorded calls of windowFunctions, in order.
    std::vector<std::string> windowCalls() const;

    // The functions for monitors. Absent in a program that links only the windows component.
    static const std::set<std::string> displayFunctions;

    // The functions for windows. Absent in a program that links only the display component.
    static const std::set<std::string> windowFunctions;

    // The functions of COM and OLE. Absent in a program that does not link the WMI query.
    static const std::set<std::string> wmiFunctions;

    Journal journal;
    Clock clock;
    Monitors monitors;
    DisplayPaths displayPaths;
    ComboBoxes comboBoxes;
    Windows windows;
    Cloaking cloaking;
    EventHooks eventHooks;
    Wmi wmi;

private:
    std::vector<std::string> callsOf(const std::set<std::string>& functions) const;
};

} // namespace simulation
