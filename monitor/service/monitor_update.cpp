#include "monitor/service/monitor_data.h"
#include "monitor/service/narrow.h"
#include "runtime/core.h"

namespace vorlen {

namespace {

ui::MonitorInfo toCached(const ::MonitorInfo& monitor) {
    return {monitor.hMonitor,  monitor.deviceName, monitor.friendlyName,
            monitor.monitorId, monitor.x,          monitor.y,
            monitor.width,     monitor.height,     monitor.refreshRate};
}

VORLEN_MONITOR_INFO toRuntime(const ::MonitorInfo& monitor) {
    return {narrow(monitor.deviceName),
            narrow(monitor.friendlyName),
            narrow(monitor.monitorId),
            monitor.x,
            monitor.y,
            monitor.width,
            monitor.height,
            monitor.refreshRate};
}

} // namespace

// The cache and the core's list name the same monitors at the same indexes.
void MonitorData::UpdateMonitorList() {
    if (!monitorList) {
        return;
    }
    updatePending = true;
    monitorList->Update();
    monitors.clear();
    VorlenCore::Instance().ClearMonitorList();
    for (const ::MonitorInfo& monitor : monitorList->GetMonitors()) {
        monitors.push_back(toCached(monitor));
        VorlenCore::Instance().AddMonitorItem(toRuntime(monitor));
    }
    lastMonitorUpdate = std::chrono::steady_clock::now();
    updatePending = false;
}

} // namespace vorlen
