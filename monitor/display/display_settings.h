#pragma once

#include "monitor/display/monitor_info.h"

#include <windows.h>

#include <optional>
#include <string>

// The monitor's display device name, such as \\.\DISPLAY1; nothing when the handle is not, or no
// longer, a monitor's.
std::optional<std::wstring> readDeviceName(HMONITOR monitor);

// Writes position, size and refresh rate of the device's current display mode into the record, or
// zeros when the mode cannot be read.
void readDisplaySettings(const std::wstring& deviceName, MonitorInfo& info);
