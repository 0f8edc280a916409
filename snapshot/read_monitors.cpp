#include "platform/for_each.h"
#include "platform/text.h"
#include "snapshot/parts.h"

namespace snapshot {

namespace {

Rectangle toRectangle(const RECT& rect) {
    return {rect.left, rect.top, rect.right, rect.bottom};
}

DisplayMode toDisplayMode(const DEVMODEW& mode) {
    DisplayMode result;
    result.width = static_cast<std::int32_t>(mode.dmPelsWidth);
    result.height = static_cast<std::int32_t>(mode.dmPelsHeight);
    result.frequency = static_cast<std::int32_t>(mode.dmDisplayFrequency);
    result.bitsPerPixel = static_cast<std::int32_t>(mode.dmBitsPerPel);
    result.orientation = static_cast<std::int32_t>(mode.dmDisplayOrientation);
    result.fixedOutput = static_cast<std::int32_t>(mode.dmDisplayFixedOutput);
    result.interlaced = (mode.dmDisplayFlags & DM_INTERLACED) != 0;
    return result;
}

// The mode of this number, or ENUM_CURRENT_SETTINGS.
std::optional<DEVMODEW> settingsOf(const std::wstring& deviceName, DWORD number) {
    DEVMODEW mode{};
    mode.dmSize = sizeof(mode);
    return EnumDisplaySettingsW(deviceName.c_str(), number, &mode) != FALSE ? std::optional(mode)
                                                                            : std::nullopt;
}

Monitor readMonitor(HMONITOR handle) {
    Monitor monitor;
    monitor.handle = reinterpret_cast<std::uintptr_t>(handle);
    MONITORINFOEXW info{};
    info.cbSize = sizeof(info);
    monitor.informationRead = GetMonitorInfoW(handle, &info) != FALSE;
    if (!monitor.informationRead) {
        return monitor;
    }
    monitor.deviceName = vorlen::textOf(info.szDevice);
    monitor.rectangle = toRectangle(info.rcMonitor);
    monitor.workArea = toRectangle(info.rcWork);
    monitor.primary = (info.dwFlags & MONITORINFOF_PRIMARY) != 0;
    if (const auto mode = settingsOf(monitor.deviceName, ENUM_CURRENT_SETTINGS)) {
        monitor.currentMode = {mode->dmPosition.x, mode->dmPosition.y, toDisplayMode(*mode)};
    }
    for (DWORD number = 0; const auto mode = settingsOf(monitor.deviceName, number); ++number) {
        monitor.offeredModes.push_back(toDisplayMode(*mode));
    }
    return monitor;
}

} // namespace

std::vector<Monitor> readMonitors() {
    std::vector<HMONITOR> handles;
    vorlen::forEachMonitor([&](HMONITOR handle) { handles.push_back(handle); });
    std::vector<Monitor> monitors;
    monitors.reserve(handles.size());
    for (const HMONITOR handle : handles) {
        monitors.push_back(readMonitor(handle));
    }
    return monitors;
}

} // namespace snapshot
