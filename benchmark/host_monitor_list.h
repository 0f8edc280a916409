#pragma once

#include <windows.h>

#include <string>
#include <vector>

namespace bench {

struct HostMonitor {
    HMONITOR handle = nullptr;
    std::wstring deviceName;
    POINTL position{};
    SIZE size{};
    DWORD frequency = 0;
    std::wstring friendlyName;
    std::wstring devicePath;
};

// Lists the monitors as a host would do it without the library: every call reads everything, and
// the display configuration once for all monitors.
class HostMonitorList {
public:
    // Calls the functions that the import table of the image contains now, including redirections.
    explicit HostMonitorList(HMODULE image);

    std::vector<HostMonitor> read() const;

private:
    void readMode(HostMonitor& monitor) const;
    std::vector<DISPLAYCONFIG_PATH_INFO> readPaths() const;
    void readNames(const DISPLAYCONFIG_PATH_INFO& path, std::vector<HostMonitor>& monitors) const;

    decltype(EnumDisplayMonitors)* enumDisplayMonitors = nullptr;
    decltype(GetMonitorInfoW)* getMonitorInfo = nullptr;
    decltype(EnumDisplaySettingsW)* enumDisplaySettings = nullptr;
    decltype(GetDisplayConfigBufferSizes)* getBufferSizes = nullptr;
    decltype(QueryDisplayConfig)* queryDisplayConfig = nullptr;
    decltype(DisplayConfigGetDeviceInfo)* getDeviceInfo = nullptr;
};

} // namespace bench
