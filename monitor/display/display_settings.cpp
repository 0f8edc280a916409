#include "monitor/display/display_settings.h"

#include "platform/text.h"

std::optional<std::wstring> readDeviceName(HMONITOR monitor) {
    MONITORINFOEXW info{};
    info.cbSize = sizeof(info);
    if (GetMonitorInfoW(monitor, &info) == FALSE) {
        return std::nullopt;
    }
    return vorlen::textOf(info.szDevice);
}

void readDisplaySettings(const std::wstring& deviceName, MonitorInfo& info) {
    DEVMODEW mode{};
    mode.dmSize = sizeof(mode);
    if (EnumDisplaySettingsW(deviceName.c_str(), ENUM_CURRENT_SETTINGS, &mode) == FALSE) {
        mode = {};
    }
    info.x = mode.dmPosition.x;
    info.y = mode.dmPosition.y;
    info.width = static_cast<std::int32_t>(mode.dmPelsWidth);
    info.height = static_cast<std::int32_t>(mode.dmPelsHeight);
    info.refreshRate = static_cast<std::int32_t>(mode.dmDisplayFrequency);
}
