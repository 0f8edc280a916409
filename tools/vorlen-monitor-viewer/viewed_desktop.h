#pragma once

#include "tools/vorlen-monitor-viewer/monitors.h"
#include "tools/vorlen-monitor/doctor/examination.h"
#include "tools/vorlen-monitor/windows_command.h"

#include <windows.h>

#include <vector>

namespace vorlen::tool {
class Service;
}

namespace vorlen::viewer {

// What the module knows about the desktop. Used on the service thread.
class ViewedDesktop {
public:
    // The service, and the reading whose desktop it sees (null: that of this session), live longer
    // than the object.
    ViewedDesktop(const tool::Service& usedService, const snapshot::Reading* replayedReading);

    const snapshot::Reading* reading() const { return replayed; }

    // The library's list, which is at most 500 ms old.
    std::vector<ViewedMonitor> monitors() const;

    // Makes the library read the monitors again.
    void updateMonitors() const;

    // Every window, with the reason if it is not capturable.
    std::vector<tool::WindowRow> windows() const;

    // Lets the module fill a combo box, and keep the one of windows as its list. The box of
    // monitors keeps the names that it got.
    void fillMonitorBox(HWND box) const;
    void fillWindowBox(HWND box) const;

    // The window at an index of the module's list; null for an index outside the list.
    HWND listedWindow(int index) const;

    // Runs the check, and adds the library's answers to a reading.
    tool::Examination examine(snapshot::Reading reading) const;

private:
    const tool::Service& service;
    const snapshot::Reading* replayed;
};

} // namespace vorlen::viewer
