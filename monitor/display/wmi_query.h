#pragma once

#include <map>
#include <string>
#include <vector>

// A monitor whose identification is asked for.
struct PendingMonitorId {
    std::wstring prefix;     // with which the monitor's WMI instance name begins; not empty
    std::wstring devicePath; // device interface path
};

// Asks WMI for the serial number text of every monitor and sets those of pending monitors in the
// results, by device path. A failure of COM or WMI ends it quietly with what it has; a query text
// that cannot be built is thrown as _com_error with E_OUTOFMEMORY. The calling thread must be of no
// apartment yet; one call at a time in the process.
void queryWmiMonitorIds(const std::vector<PendingMonitorId>& pending,
                        std::map<std::wstring, std::wstring>& results);
