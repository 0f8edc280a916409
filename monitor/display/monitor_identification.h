#pragma once

#include <string>
#include <vector>

// The serial number texts of monitors, by device interface path. WMI is queried once for each path
// while the library is loaded, also when it has no text. Any thread; while one call queries WMI,
// calls of the last two functions on other threads wait.

// The text that a monitor's WMI instance name begins with; empty when the device path is not that
// of a display.
std::wstring wmiInstancePrefix(const std::wstring& devicePath);

// Queries WMI for all paths that are not cached yet, in one query on a worker thread, and returns
// when the query has ended. When WMI fails, texts stay empty. Throws std::system_error when the
// thread cannot be started or waited for, and _com_error when the query's strings cannot be
// allocated; nothing is cached then.
void cacheMonitorIds(const std::vector<std::wstring>& devicePaths);

// The cached text of the path; empty when WMI has none or the path is not cached.
std::wstring getCachedMonitorId(const std::wstring& devicePath);
