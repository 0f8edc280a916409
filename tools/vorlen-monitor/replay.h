#pragma once

#include "simulation/simulated_desktop.h"
#include "snapshot/reading.h"

#include <string>

namespace vorlen::tool {

// The reading in the file of a recording, to be replayed by this process: its kit models replace
// those of this session. report(line) is called on any thread when the library makes a call for
// which the simulated desktop has no answer; none of the library's code may run after it. To be
// called before the libraries are loaded. Throws a Failure as readRecording() does.
snapshot::Reading prepareReplay(const std::string& file, void (*report)(const std::string& line));

// The message for such a line.
std::string wrongCall(const std::string& line);

// Makes an empty simulated desktop that of a reading: monitors, display paths, WMI and windows with
// their handles and order, and every failure of the system. Nothing changes on it later, and its
// journal does not record, so that it can be used without end. Combo boxes are those of this
// program. To be called before the service of the desktop's image starts.
void replay(const snapshot::Reading& reading, simulation::SimulatedDesktop& desktop);

} // namespace vorlen::tool
