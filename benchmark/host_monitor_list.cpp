#include "benchmark/host_monitor_list.h"

#include "simulation/import_redirect.h"

namespace bench {

namespace {

BOOL CALLBACK append(HMONITOR monitor, HDC, RECT*, LPARAM parameter) {
    reinterpret_cast<std::vector<HostMonitor>*>(parameter)->emplace_back().handle = monitor;
    return TRUE;
}

} // namespace

HostMonitorList::HostMonitorList(HMODULE image) {
    const auto resolve = [image]<typename Function>(Function*& function, const char* name) {
        function = reinterpret_cast<Function*>(simulation::importedFunction(image, name));
    };
    resolve(enumDisplayMonitors, "EnumDisplayMonitors");
    resolve(getMonitorInfo, "GetMonitorInfoW");
    resolve(enumDisplaySettings, "EnumDisplaySettingsW");
    resolve(getBufferSizes, "GetDisplayConfigBufferSizes");
    resolve(queryDisplayConfig, "QueryDisplayConfig");
    resolve(getDeviceInfo, "DisplayConfigGetDeviceInfo");
}

std::vector<HostMonitor> HostMonitorList::read() const {
    std::vector<HostMonitor> monitors;
    enumDisplayMonitors(nullptr, nullptr, append, reinterpret_cast<LPARAM>(&monitors));
    for (HostMonitor& monitor : monitors) {
        readMode(monitor);
    }
    for (const DISPLAYCONFIG_PATH_INFO& path : readPaths()) {
        readNames(path, monitors);
    }
    return monitors;
}

void HostMonitorList::readMode(HostMonitor& monitor) const {
    MONITORINFOEXW information{};
    information.cbSize = sizeof(information);
    getMonitorInfo(monitor.handle, &information);
    monitor.deviceName = information.szDevice;
    DEVMODEW mode{};
    mode.dmSize = sizeof(mode);
    enumDisplaySettings(information.szDevice, ENUM_CURRENT_SETTINGS, &mode);
    monitor.position = mode.dmPosition;
    monitor.size = {static_cast<LONG>(mode.dmPelsWidth), static_cast<LONG>(mode.dmPelsHeight)};
    monitor.frequency = mode.dmDisplayFrequency;
}

std::vector<DISPLAYCONFIG_PATH_INFO> HostMonitorList::readPaths() const {
    UINT32 pathCount = 0;
    UINT32 modeCount = 0;
    getBufferSizes(QDC_ONLY_ACTIVE_PATHS, &pathCount, &modeCount);
    std::vector<DISPLAYCONFIG_PATH_INFO> paths(pathCount);
    std::vector<DISPLAYCONFIG_MODE_INFO> modes(modeCount);
    queryDisplayConfig(QDC_ONLY_ACTIVE_PATHS, &pathCount, paths.data(), &modeCount, modes.data(),
                       nullptr);
    paths.resize(pathCount);
    return paths;
}

void HostMonitorList::readNames(const DISPLAYCONFIG_PATH_INFO& path,
                                std::vector<HostMonitor>& monitors) const {
    DISPLAYCONFIG_SOURCE_DEVICE_NAME source{};
    source.header = {DISPLAYCONFIG_DEVICE_INFO_GET_SOURCE_NAME, sizeof(source),
                     path.sourceInfo.adapterId, path.sourceInfo.id};
    // The simulated desktop finds source and target by the adapter id of the source.
    DISPLAYCONFIG_TARGET_DEVICE_NAME target{};
    target.header = {DISPLAYCONFIG_DEVICE_INFO_GET_TARGET_NAME, sizeof(target),
                     path.sourceInfo.adapterId, path.targetInfo.id};
    getDeviceInfo(&source.header);
    getDeviceInfo(&target.header);
    for (HostMonitor& monitor : monitors) {
        if (monitor.deviceName == source.viewGdiDeviceName) {
            monitor.friendlyName = target.monitorFriendlyDeviceName;
            monitor.devicePath = target.monitorDevicePath;
        }
    }
}

} // namespace bench
