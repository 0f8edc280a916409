#pragma once

#include "snapshot/read_desktop.h"
#include "snapshot/reading.h"

#include <vector>

// The parts of readDesktop(). Any thread, in any apartment or none.
namespace snapshot {

std::vector<Monitor> readMonitors();
DisplayConfiguration readDisplayConfiguration();
std::vector<Window> readWindows(const ReasonOf& reasonOf);
Process readProcess();

// Throws _com_error with E_OUTOFMEMORY when the query's strings cannot be allocated, and
// std::system_error when its thread cannot be started.
Wmi readWmi();

} // namespace snapshot
