#pragma once

#include "vorlen/monitor.h"

namespace vorlen {

class MonitorData;

// Makes and destroys the one service, on the service thread; the runtime calls them. Init while it
// exists and cleanup while it does not do nothing. An exception of its construction leaves init.
// While init reads the desktop, procedures of the host's windows and the runtime may call the
// module: there is no service yet, and both init and cleanup do nothing.
void initModule();
void cleanupModule();

namespace monitor_internal {

// The service, which stays the module's; null before init and after cleanup.
VORLEN_MONITOR_API MonitorData* GetMonitorData();

} // namespace monitor_internal
} // namespace vorlen
