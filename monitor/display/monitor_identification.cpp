#include "monitor/display/monitor_identification.h"

#include "monitor/display/wmi_query.h"
#include "platform/locks.h"
#include "platform/worker.h"

#include <algorithm>
#include <map>
#include <memory>
#include <mutex>
#include <utility>

namespace {

std::map<std::wstring, std::wstring> monitorIdCache; // by device path; nothing is ever removed
vorlen::Mutex monitorIdCacheMutex;                   // held while a query runs

std::vector<PendingMonitorId> findPending(const std::vector<std::wstring>& devicePaths) {
    std::vector<PendingMonitorId> pending;
    for (const std::wstring& devicePath : devicePaths) {
        if (devicePath.empty() || monitorIdCache.contains(devicePath)) {
            continue;
        }
        std::wstring prefix = wmiInstancePrefix(devicePath);
        if (!prefix.empty()) {
            pending.push_back({std::move(prefix), devicePath});
        }
    }
    return pending;
}

// On a worker thread, because the query needs a thread that is not in an apartment yet.
std::map<std::wstring, std::wstring> query(const std::vector<PendingMonitorId>& pending) {
    const auto results = std::make_shared<std::map<std::wstring, std::wstring>>();
    vorlen::runOnWorker([pending, results] { queryWmiMonitorIds(pending, *results); });
    return std::move(*results);
}

} // namespace

std::wstring wmiInstancePrefix(const std::wstring& devicePath) {
    const std::size_t start = devicePath.find(L"DISPLAY");
    const std::size_t end = devicePath.rfind(L'#');
    if (start == std::wstring::npos || end == std::wstring::npos || end < start) {
        return {};
    }
    std::wstring prefix = devicePath.substr(start, end - start);
    std::ranges::replace(prefix, L'#', L'\\');
    return prefix;
}

void cacheMonitorIds(const std::vector<std::wstring>& devicePaths) {
    const std::lock_guard lock(monitorIdCacheMutex);
    const std::vector<PendingMonitorId> pending = findPending(devicePaths);
    if (pending.empty()) {
        return;
    }
    std::map<std::wstring, std::wstring> results = query(pending);
    for (const PendingMonitorId& monitor : pending) {
        results.try_emplace(monitor.devicePath); // WMI does not list every monitor
    }
    // Caches all results. After an exception above, none is cached: merge() itself cannot fail.
    monitorIdCache.merge(results);
}

std::wstring getCachedMonitorId(const std::wstring& devicePath) {
    const std::lock_guard lock(monitorIdCacheMutex);
    const auto found = monitorIdCache.find(devicePath);
    return found != monitorIdCache.end() ? found->second : std::wstring();
}
