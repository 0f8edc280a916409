#pragma once

#include "monitor/service/ui_records.h"
#include "vorlen/monitor.h"

#include <algorithm>
#include <cstdint>
#include <vector>

namespace vorlen {

// Copies the text into the field, cut to leave room for a terminating zero. The rest is zeros.
template <std::size_t units>
void copyText(const std::wstring& text, VLChar16 (&field)[units]) {
    const auto end = std::copy_n(text.begin(), std::min(text.size(), units - 1), field);
    std::fill(end, field + units, L'\0');
}

// Writes every field. The padding stays unchanged.
inline void copyRecord(const ui::MonitorInfo& monitor, MonitorListItem& item) {
    item.handle = monitor.handle;
    copyText(monitor.deviceName, item.deviceName);
    copyText(monitor.friendlyName, item.friendlyName);
    copyText(monitor.monitorId, item.monitorId);
    item.x = monitor.x;
    item.y = monitor.y;
    item.width = monitor.width;
    item.height = monitor.height;
    item.refreshRate = monitor.refreshRate;
}

inline void copyRecord(const ui::WindowInfo& window, WindowListItem& item) {
    item.handle = window.hwnd;
    copyText(window.title, item.title);
    copyText(window.className, item.className);
}

// The body of getMonitorList and getWindowList: returns the number of records when items is null;
// else copies the records that fit and returns how many. Returns a negative capacity unchanged.
template <typename Record, typename Item>
int copyList(const std::vector<Record>& records, Item* items, std::int32_t capacity) {
    const auto count = static_cast<std::int32_t>(records.size());
    if (items == nullptr) {
        return count;
    }
    const std::int32_t copied = std::min(count, capacity);
    for (std::int32_t i = 0; i < copied; ++i) {
        copyRecord(records[static_cast<std::size_t>(i)], items[i]);
    }
    return copied;
}

} // namespace vorlen
