#pragma once

#include "simulation/current.h"
#include "simulation/journal.h"
#include "simulation/redirects.h"

#include <windows.h>

#include <optional>
#include <string>
#include <vector>

namespace simulation {

// A display mode, in the units of DEVMODEW.
struct DisplayMode {
    LONG x = 0;
    LONG y = 0;
    DWORD width = 0;
    DWORD height = 0;
    DWORD frequency = 0;
};

struct SimulatedMonitor {
    HMONITOR handle = nullptr;
    std::wstring deviceName;
    std::optional<DisplayMode> mode; // nothing: EnumDisplaySettingsW fails
    RECT rectangle{};                // of GetMonitorInfoW
    bool informationReadable = true;
};

// The monitors of the desktop behind EnumDisplayMonitors, GetMonitorInfoW and
// EnumDisplaySettingsW. Every argument is checked, more strictly than Windows does.
class Monitors : private Current<Monitors> {
public:
    Monitors(Redirects& redirects, Journal& calls);

    // Adds a monitor after the others. Its rectangle is that of its mode.
    SimulatedMonitor& add(const std::wstring& deviceName, std::optional<DisplayMode> mode);

    // In the system's order.
    std::vector<SimulatedMonitor> all;

    // Whether EnumDisplaySettingsW returns the settings of the first monitor for an empty device
    // name, as under Wine. Otherwise it fails.
    bool noNameIsFirst = false;

private:
    friend class Current<Monitors>;
    const SimulatedMonitor* find(HMONITOR handle) const;
    static BOOL WINAPI enumerate(HDC context, LPCRECT clip, MONITORENUMPROC callback,
                                 LPARAM parameter);
    static BOOL WINAPI getInformation(HMONITOR handle, LPMONITORINFO information);
    static BOOL WINAPI enumerateSettings(LPCWSTR deviceName, DWORD modeNumber, DEVMODEW* mode);

    Journal& journal;
    INT_PTR lastHandle = 0x10000;
};

} // namespace simulation
