#pragma once

#include <string>
#include <vector>

// The serial number texts of monitors by device interface path, asked of WMI once per path in the
// life of the process, also when WMI knows none. Any thread; a call waits while another one asks.

// The leading part of the WMI instance name that belongs to the device path; empty when the path is
// none of a display.
std::wstring wmiInstancePrefix(const std::wstring& devicePath);

// Asks for those of the paths that were not asked for before, all in one query on a thread of its
// own, and returns when it has ended. What goes wrong with WMI leaves texts empty; a thread that
// cannot be started is thrown as std::system_error, a query that cannot be built as _com_error, and
// then nothing is cached.
void cacheMonitorIds(const std::vector<std::wstring>& devicePaths);

// The text of the path; empty when there is none or it was not asked for.
std::wstring getCachedMonitorId(const std::wstring& devicePath);
