#include "monitor/list_copy.h"
#include "monitor/module.h"
#include "monitor/service/monitor_data.h"
#include "vorlen/monitor.h"

#include <stdexcept>

using vorlen::MonitorData;
using vorlen::monitor_internal::GetMonitorData;

bool checkMonitorStatus() {
    MonitorData* const service = GetMonitorData();
    return service != nullptr && service->checkMonitorStatus();
}

int getMonitorList(MonitorListItem* items, int32_t capacity) {
    MonitorData* const service = GetMonitorData();
    return service != nullptr ? vorlen::copyList(service->GetMonitorList(), items, capacity) : 0;
}

int getWindowList(WindowListItem* items, int32_t capacity) {
    MonitorData* const service = GetMonitorData();
    return service != nullptr ? vorlen::copyList(service->GetWindowList(), items, capacity) : 0;
}

const char* getMonitorModelName() {
    MonitorData* const service = GetMonitorData();
    return service != nullptr ? service->GetCurrentMonitorName() : nullptr;
}

const char* getVorlenMonitorModelName() {
    const MonitorData* const service = GetMonitorData();
    return service != nullptr ? service->GetMonitorModelName().c_str() : nullptr;
}

void setVorlenMonitorModelName(const char* name, int32_t length) {
    if (MonitorData* const service = GetMonitorData()) {
        // Checked first: for a null name, std::string throws std::logic_error.
        if (length < 0) {
            throw std::length_error("the length of a model name is negative");
        }
        service->SetMonitorModelName(std::string(name, static_cast<std::size_t>(length)));
    }
}

_VLRect getMonitorRect() {
    MonitorData* const service = GetMonitorData();
    return service != nullptr ? service->GetCurrentMonitorRect() : _VLRect{};
}

void updateMonitorList() {
    if (MonitorData* const service = GetMonitorData()) {
        service->UpdateMonitorList();
    }
}
