#pragma once

#include "vorlen/monitor.h"

namespace vorlen {

class MonitorData;

// Create and destroy the service. The runtime calls them on the service thread. initModule does
// nothing while a service exists; it throws what the construction of the service throws.
// cleanupModule does nothing without a service. While initModule reads the desktop, the runtime
// and procedures of the host's windows may call the module: there is no service yet, and both
// functions do nothing.
void initModule();
void cleanupModule();

namespace monitor_internal {

// The service, owned by the module; null before init and after cleanup.
VORLEN_MONITOR_API MonitorData* GetMonitorData();

} // namespace monitor_internal
} // namespace vorlen
