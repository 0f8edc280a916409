#pragma once

#include "monitor/service/monitor_data.h"

#include <chrono>
#include <memory>
#include <vector>

namespace tests {

// The private members of the service, for states that no call can bring about and effects that no
// call shows. The service of a loaded library has the layout that this program was compiled with.

std::vector<vorlen::ui::MonitorInfo>& cachedMonitors(vorlen::MonitorData& service);
std::chrono::steady_clock::time_point lastMonitorUpdate(const vorlen::MonitorData& service);
std::unique_ptr<MonitorList>& monitorListOf(vorlen::MonitorData& service);

} // namespace tests
