#pragma once

#include "monitor/service/monitor_data.h"
#include "monitor/windows/window_list.h"

#include <windows.h>

#include <unordered_set>
#include <vector>

namespace tests {

// Private members that no call shows. The service of a loaded library has the layout that this
// program was compiled with.

// The service's live list, or null while it is switched off.
const WindowList* liveListOf(const vorlen::MonitorData& service);

// The handles of the list's windows in order of appearance.
std::vector<HWND> listedHandlesOf(const WindowList& list);

// The handles that the list knows, which must be exactly those of its windows.
std::unordered_set<HWND> handleSetOf(const WindowList& list);

} // namespace tests
