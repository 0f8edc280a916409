#include "vorlen/diagnostics.h"

#include "monitor/list_copy.h"
#include "monitor/module.h"
#include "monitor/service/monitor_data.h"
#include "monitor/service/status_check.h"
#include "monitor/windows/capture_filter.h"
#include "monitor/windows/window_list.h"

namespace vorlen::monitor_internal {

std::int32_t getLastMonitorStatus() {
    return lastMonitorStatus();
}

bool getCheckedMonitor(MonitorListItem* item) {
    const MonitorData* const service = GetMonitorData();
    const ui::MonitorInfo* const checked =
        service != nullptr ? service->GetCheckedMonitor() : nullptr;
    if (checked == nullptr) {
        return false;
    }
    copyRecord(*checked, *item);
    return true;
}

const char* getReasonNotCapturable(void* window) {
    return reasonNotCapturable(WindowInfo(static_cast<HWND>(window)));
}

bool restartWindowList() {
    MonitorData* const service = GetMonitorData();
    // WindowList::Get() is null on other threads, and while the runtime has switched the list off.
    if (service == nullptr || WindowList::Get() == nullptr) {
        return false;
    }
    service->UseWindowList(false);
    service->UseWindowList(true);
    // A window procedure that ran while titles were read may have shut the library down.
    return WindowList::Get() != nullptr;
}

} // namespace vorlen::monitor_internal
