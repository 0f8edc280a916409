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

// A desktop in memory behind the imports of one image: it shows what a test puts on it, keeps the
// time that a test gives it, and notes every call. Empty at first. One at a time.
class SimulatedDesktop {
    Redirects redirects;

public:
    // The functions named as absent need not be imported by the image: a test program that links
    // only a part of the module calls only a part of the platform.
    explicit SimulatedDesktop(HMODULE image, std::set<std::string> absentFunctions = {});

    // Puts a monitor on the desktop together with the display path that leads to it. Its device
    // path is not one that WMI is asked about.
    SimulatedMonitor& addMonitor(const std::wstring& deviceName, const std::wstring& friendlyName,
                                 const DisplayMode& mode);

    // The calls of the platform that tell something of monitors, in order.
    std::vector<std::string> displayCalls() const;

    // The same for windows.
    std::vector<std::string> windowCalls() const;

    // The functions behind displayCalls(): absent where only the windows' part is linked.
    static const std::set<std::string> displayFunctions;

    // The functions behind windowCalls(): absent where only the monitors' part is linked.
    static const std::set<std::string> windowFunctions;

    // The functions of COM and OLE: absent where the identification of monitors is not linked.
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
