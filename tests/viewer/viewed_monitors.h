#pragma once

#include "tools/vorlen-monitor-viewer/monitors.h"

#include <windows.h>

#include <algorithm>
#include <iterator>
#include <string_view>

namespace vorlen::viewer {

inline void setText(VLChar16 (&field)[VORLEN_MONITOR_TEXT_UNITS], std::wstring_view text) {
    std::ranges::fill(field, L'\0');
    std::ranges::copy(text, std::begin(field));
}

// A kit monitor \\.\DISPLAY1 "KIT 27" that passes the check, and is the current one.
inline ViewedMonitor kitMonitor() {
    ViewedMonitor monitor;
    monitor.record.handle = reinterpret_cast<void*>(0x10001);
    setText(monitor.record.deviceName, LR"(\\.\DISPLAY1)");
    setText(monitor.record.friendlyName, L"KIT 27");
    setText(monitor.record.monitorId, L"SN-1");
    monitor.record.width = 3840;
    monitor.record.height = 2160;
    monitor.record.refreshRate = 60;
    monitor.isKitModel = true;
    monitor.isCurrent = true;
    return monitor;
}

// \\.\DISPLAY2 "Office" to its right, without a serial number.
inline ViewedMonitor otherMonitor() {
    ViewedMonitor monitor;
    monitor.record.handle = reinterpret_cast<void*>(0x10002);
    setText(monitor.record.deviceName, LR"(\\.\DISPLAY2)");
    setText(monitor.record.friendlyName, L"Office");
    monitor.record.x = 3840;
    monitor.record.width = 1920;
    monitor.record.height = 1080;
    monitor.record.refreshRate = 30;
    return monitor;
}

} // namespace vorlen::viewer
