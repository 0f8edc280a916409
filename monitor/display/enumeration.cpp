#include "monitor/display/enumeration.h"

#include "monitor/display/display_paths.h"
#include "monitor/display/display_settings.h"
#include "monitor/display/monitor_identification.h"
#include "platform/for_each.h"

#include <algorithm>
#include <utility>

namespace {

std::vector<HMONITOR> collectHandles() {
    std::vector<HMONITOR> handles;
    vorlen::forEachMonitor([&](HMONITOR monitor) { handles.push_back(monitor); });
    return handles;
}

// Cloned outputs share a device name. The first display path with the name gives the texts.
void fillNames(MonitorInfo& info, const std::vector<DisplayPathInfo>& paths) {
    const auto path = std::ranges::find(paths, info.deviceName, &DisplayPathInfo::gdiDeviceName);
    if (path != paths.end()) {
        info.friendlyName = path->friendlyName;
        info.devicePath = path->devicePath;
    }
}

void identify(std::vector<MonitorInfo>& monitors) {
    std::vector<std::wstring> devicePaths;
    for (const MonitorInfo& monitor : monitors) {
        if (!monitor.devicePath.empty()) {
            devicePaths.push_back(monitor.devicePath);
        }
    }
    cacheMonitorIds(devicePaths);
    for (MonitorInfo& monitor : monitors) {
        monitor.monitorId = getCachedMonitorId(monitor.devicePath);
    }
}

} // namespace

std::vector<MonitorInfo> EnumerateAllMonitors(bool includeAllDisplays) {
    const std::vector<HMONITOR> handles = collectHandles();
    const std::vector<DisplayPathInfo> paths = getActiveDisplayPaths();

    std::vector<MonitorInfo> monitors;
    monitors.reserve(handles.size() + 1);
    for (const HMONITOR handle : handles) {
        if (auto deviceName = readDeviceName(handle)) {
            MonitorInfo& info = monitors.emplace_back();
            info.hMonitor = handle;
            info.deviceName = *std::move(deviceName);
            readDisplaySettings(info.deviceName, info);
            fillNames(info, paths);
        }
    }
    identify(monitors);

    if (includeAllDisplays && monitors.size() >= 2) {
        monitors.emplace_back(nullptr, L"All Displays");
    }
    return monitors;
}

void getMonitorBasicInfo(HMONITOR monitor, MonitorInfo& info) {
    const std::wstring deviceName = readDeviceName(monitor).value_or(L"");
    readDisplaySettings(deviceName, info);
    if (auto path = findDisplayPath(deviceName)) {
        info.friendlyName = std::move(path->friendlyName);
        info.devicePath = std::move(path->devicePath);
    }
}
