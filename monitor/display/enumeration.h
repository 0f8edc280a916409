#pragma once

#include "monitor/display/monitor_info.h"
#include "vorlen/monitor.h"

#include <vector>

// The attached monitors whose information can be read, in the system's order; with
// includeAllDisplays and at least two of them, an entry "All Displays" without a handle follows.
// Settings that cannot be read are 0, names that no display path tells are empty. Waits for WMI
// when a monitor is seen for the first time, and throws then what cacheMonitorIds throws. Any
// thread.
std::vector<MonitorInfo> EnumerateAllMonitors(bool includeAllDisplays);

// Reads the display settings of the monitor into the record's five numbers (zeros when they cannot
// be read) and, when an active display path leads to it, its friendly name and device path; every
// other field stays as it is. A handle that is not, or no longer, that of a monitor has the numbers
// that the system gives for a display device without a name: zeros when it knows none, the primary
// monitor's under Wine. Any thread.
VORLEN_MONITOR_API void getMonitorBasicInfo(HMONITOR monitor, MonitorInfo& info);
