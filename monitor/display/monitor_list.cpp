#include "monitor/display/monitor_list.h"

#include "monitor/display/enumeration.h"
#include "platform/combo_box.h"

#include <cstddef>
#include <memory>
#include <stdexcept>
#include <string>

MonitorList::MonitorList(bool includeAll) : includeAllDisplays(includeAll) {
    if (Get() != nullptr) {
        throw std::logic_error("MonitorList already exists for this thread!");
    }
    instance.Bind(*this);
}

MonitorList* MonitorList::Get() {
    return vorlen::ThreadObject<MonitorList>::Get();
}

// Intended: combo boxes are not updated. They keep the names that they got when registered.
void MonitorList::Update() {
    monitors = EnumerateAllMonitors(includeAllDisplays);
}

RECT MonitorList::GetMonitorRect(HMONITOR monitor) const {
    MONITORINFOEXW info{};
    info.cbSize = sizeof(info);
    GetMonitorInfoW(monitor, &info);
    return info.rcMonitor;
}

void MonitorList::RegisterComboBoxForUpdates(HWND comboBox) {
    comboBoxes.push_back(comboBox);
    ForceUpdateComboBox(comboBox);
}

void MonitorList::ForceUpdateComboBox(HWND comboBox) {
    const std::weak_ptr<void> alive = lifetime;
    vorlen::resetComboBox(comboBox);
    // By index and with copies: the list may be updated or destroyed while the combo box handles a
    // message.
    for (std::size_t i = 0; !alive.expired() && i < monitors.size(); ++i) {
        const std::wstring deviceName = monitors[i].deviceName;
        vorlen::appendToComboBox(comboBox, deviceName);
    }
}
