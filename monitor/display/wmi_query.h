#pragma once

#include <map>
#include <string>
#include <vector>

// A monitor whose serial number text is wanted.
struct PendingMonitorId {
    std::wstring prefix;     // start of the monitor's WMI instance name; not empty
    std::wstring devicePath; // device interface path
};

// Queries WMI for the serial number texts of all monitors and writes those of the pending monitors
// into results, by device path. When COM or WMI fails, it returns and results keeps what was read
// before. Throws _com_error with E_OUTOFMEMORY when the query's strings cannot be allocated. The
// calling thread must not be in an apartment. At most one call at a time.
void queryWmiMonitorIds(const std::vector<PendingMonitorId>& pending,
                        std::map<std::wstring, std::wstring>& results);
