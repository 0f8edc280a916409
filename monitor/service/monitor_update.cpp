#include "monitor/service/monitor_data.h"
#include "platform/text.h"
#include "runtime/core.h"

#include <utility>
#include <vector>

namespace vorlen {

namespace {

ui::MonitorInfo toCached(const ::MonitorInfo& monitor) {
    return {monitor.hMonitor,  monitor.deviceName, monitor.friendlyName,
            monitor.monitorId, monitor.x,          monitor.y,
            monitor.width,     monitor.height,     monitor.refreshRate};
}

VORLEN_MONITOR_INFO toRuntime(const ::MonitorInfo& monitor) {
    return {lowBytes(monitor.deviceName),
            lowBytes(monitor.friendlyName),
            lowBytes(monitor.monitorId),
            monitor.x,
            monitor.y,
            monitor.width,
            monitor.height,
            monitor.refreshRate};
}

} // namespace

void MonitorData::UpdateMonitorList() {
    if (!monitorList || monitorUpdate == Update::running) {
        return;
    }
    monitorUpdate = Update::running;
    try {
        ReplaceMonitors();
    } catch (...) {
        monitorUpdate = Update::abandoned;
        throw;
    }
    monitorUpdate = Update::complete;
}

// The cached list and the core's list get the same monitors at the same indexes.
void MonitorData::ReplaceMonitors() {
    monitorList->Update();
    // A copy: while it is called below, the runtime may update the thread's list.
    const std::vector<::MonitorInfo> read = monitorList->GetMonitors();
    monitors.clear();
    VorlenCore::Instance().ClearMonitorList();
    for (const ::MonitorInfo& monitor : read) {
        monitors.push_back(toCached(monitor));
        VORLEN_MONITOR_INFO item = toRuntime(monitor);
        VorlenCore::Instance().AddMonitorItem(std::move(item));
    }
    lastMonitorUpdate = std::chrono::steady_clock::now();
}

} // namespace vorlen
