#pragma once

#include "simulation/simulated_desktop.h"
#include "snapshot/reading.h"

namespace vorlen::tool {

// Makes an empty simulated desktop that of a reading: monitors, display paths, WMI and windows with
// their handles and order, and every failure of the system. Nothing changes on it later, and its
// journal does not record, so that it can be used without end. To be called before the service of
// the desktop's image starts.
void replay(const snapshot::Reading& reading, simulation::SimulatedDesktop& desktop);

} // namespace vorlen::tool
