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

// What a host would write itself to list the monitors: everything is read anew on every call, the
// display configuration once for all of them.
class HostMonitorList {
public:
    // Calls the platform through the import table of the image as it is now, and with it whatever
    // has been put in front of the platform there.
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
