#pragma once

#include "monitor/display/monitor_info.h"
#include "vorlen/monitor.h"

#include <vector>

// The attached monitors whose device names can be read, in the system's order. With
// includeAllDisplays and at least two monitors, an entry "All Displays" without a handle follows.
// Display settings that cannot be read are 0. Texts are empty for a monitor without an active
// display path. Queries WMI for monitors that are new; see cacheMonitorIds for what is thrown
// then. Any thread.
std::vector<MonitorInfo> EnumerateAllMonitors(bool includeAllDisplays);

// Writes the monitor's position, size and refresh rate into the record, or zeros when they cannot
// be read. Also writes its friendly name and device path when an active display path has its
// device name. All other fields stay unchanged. A handle that is not, or no longer, a monitor's
// gets the display settings of an empty device name: the primary monitor's under Wine, zeros on a
// system that returns none. Any thread.
VORLEN_MONITOR_API void getMonitorBasicInfo(HMONITOR monitor, MonitorInfo& info);
