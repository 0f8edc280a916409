#include "simulation/monitors.h"

#include "simulation/expect.h"
#include "simulation/platform_memory.h"

#include <algorithm>

namespace simulation {

Monitors::Monitors(Redirects& redirects, Journal& calls) : journal(calls) {
    redirects.replace<decltype(EnumDisplayMonitors)>("EnumDisplayMonitors", enumerate);
    redirects.replace<decltype(GetMonitorInfoW)>("GetMonitorInfoW", getInformation);
    redirects.replace<decltype(EnumDisplaySettingsW)>("EnumDisplaySettingsW", enumerateSettings);
}

SimulatedMonitor& Monitors::add(const std::wstring& deviceName, std::optional<DisplayMode> mode) {
    SimulatedMonitor monitor;
    monitor.handle = reinterpret_cast<HMONITOR>(++lastHandle);
    monitor.deviceName = deviceName;
    monitor.mode = mode;
    if (mode) {
        monitor.rectangle = {mode->x, mode->y, mode->x + static_cast<LONG>(mode->width),
                             mode->y + static_cast<LONG>(mode->height)};
    }
    return all.emplace_back(monitor);
}

const SimulatedMonitor* Monitors::find(HMONITOR handle) const {
    const auto found =
        std::ranges::find_if(all, [=](const auto& monitor) { return monitor.handle == handle; });
    return found != all.end() ? &*found : nullptr;
}

// A planned failure changes only the result: the callback has been called before.
BOOL WINAPI Monitors::enumerate(HDC context, LPCRECT clip, MONITORENUMPROC callback,
                                LPARAM parameter) {
    const bool fails = get().journal.enter("EnumDisplayMonitors").has_value();
    SIMULATION_EXPECT(context == nullptr);
    SIMULATION_EXPECT(clip == nullptr);
    const std::vector<SimulatedMonitor> snapshot = get().all;
    for (const SimulatedMonitor& monitor : snapshot) {
        RECT rectangle = monitor.rectangle;
        try {
            SIMULATION_EXPECT(callback(monitor.handle, nullptr, &rectangle, parameter) == TRUE,
                              "the enumeration of the monitors must not be stopped early");
        } catch (...) {
            report("an exception crossed the system's enumeration of the monitors");
            throw;
        }
    }
    return fails ? FALSE : TRUE;
}

BOOL WINAPI Monitors::getInformation(HMONITOR handle, LPMONITORINFO information) {
    const bool fails = get().journal.enter("GetMonitorInfoW").has_value();
    SIMULATION_EXPECT(information->cbSize == 104u);
    const SimulatedMonitor* const monitor = get().find(handle);
    if (fails || monitor == nullptr || !monitor->informationReadable) {
        return FALSE;
    }
    auto& extended = *static_cast<MONITORINFOEXW*>(static_cast<void*>(information));
    extended.rcMonitor = monitor->rectangle;
    // Different from the monitor's rectangle, so that a test notices the wrong one.
    extended.rcWork = {-1, -2, -3, -4};
    fillField(extended.szDevice, monitor->deviceName);
    return TRUE;
}

BOOL WINAPI Monitors::enumerateSettings(LPCWSTR deviceName, DWORD modeNumber, DEVMODEW* mode) {
    const bool fails = get().journal.enter("EnumDisplaySettingsW").has_value();
    SIMULATION_EXPECT(modeNumber == ENUM_CURRENT_SETTINGS);
    SIMULATION_EXPECT(mode->dmSize == 220);
    DEVMODEW withoutSize = *mode;
    withoutSize.dmSize = 0;
    SIMULATION_EXPECT(isZero(&withoutSize, sizeof(withoutSize)), "the mode was not zeroed first");

    const auto& all = get().all;
    const bool isFirst = get().noNameIsFirst && std::wstring(deviceName).empty();
    const auto monitor = std::ranges::find_if(all, [=](const auto& candidate) {
        return isFirst || candidate.deviceName.substr(0, CCHDEVICENAME) == deviceName;
    });
    if (fails || monitor == all.end() || !monitor->mode) {
        // A failing driver may write to the structure before it returns.
        mode->dmPosition = {7, 7};
        mode->dmPelsWidth = mode->dmPelsHeight = mode->dmDisplayFrequency = 7;
        return FALSE;
    }
    mode->dmPosition = {monitor->mode->x, monitor->mode->y};
    mode->dmPelsWidth = monitor->mode->width;
    mode->dmPelsHeight = monitor->mode->height;
    mode->dmDisplayFrequency = monitor->mode->frequency;
    return TRUE;
}

} // namespace simulation
