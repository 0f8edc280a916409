// One monitor whose names hold what a terminal obeys and what is no text at all.
#include "vorlen/monitor.h"

#include <algorithm>
#include <string_view>

namespace {

void fill(VLChar16 (&field)[VORLEN_MONITOR_TEXT_UNITS], std::wstring_view text) {
    std::fill(std::copy(text.begin(), text.end(), std::begin(field)), std::end(field), L'\0');
}

} // namespace

int getMonitorList(MonitorListItem* items, int32_t capacity) {
    if (items == nullptr || capacity < 1) {
        return items == nullptr ? 1 : capacity;
    }
    *items = {};
    fill(items->deviceName, L"red \x1b[31m, 8-bit \x009b"
                            L"31m");
    fill(items->friendlyName, L"unpaired \xd800|, pair \xd83d\xde00, \x4e2d\x6587");
    fill(items->monitorId, L"line\r\nfeed, turned \x202e round, \"quoted\"");
    return 1;
}
