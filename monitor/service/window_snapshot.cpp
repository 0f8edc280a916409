#include "monitor/service/monitor_data.h"
#include "platform/text.h"

#include <memory>
#include <utility>

namespace vorlen {

void MonitorData::UseWindowList(bool use) {
    useWindowList = use;
    if (!use) {
        // reset() clears the pointer first: code that the destructor calls finds no list.
        windowList.reset();
    } else if (!windowList && !WindowList::IsReading()) {
        const std::weak_ptr<void> alive = lifetime;
        auto list = std::make_unique<WindowList>();
        // A window procedure that ran while titles were read may have destroyed the service or
        // switched the list off.
        if (!alive.expired() && useWindowList) {
            windowList = std::move(list);
            windowsRevision.reset();
        }
    }
}

// Intended: the snapshot stays unchanged while the list is off.
void MonitorData::UpdateWindowList() {
    if (!windowList || windowsRevision == windowList->GetRevision()) {
        return;
    }
    windowsRevision.reset();
    windows.clear();
    windows.reserve(windowList->GetCurrentWindows().size());
    for (const ::WindowInfo& window : windowList->GetCurrentWindows()) {
        windows.push_back({window.hwnd, std::wstring(untilZero(window.title)),
                           std::wstring(untilZero(window.className))});
    }
    windowsRevision = windowList->GetRevision();
}

const std::vector<ui::WindowInfo>& MonitorData::GetWindowList() {
    UpdateWindowList();
    return windows;
}

} // namespace vorlen
