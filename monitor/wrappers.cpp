#include "monitor/wrappers.h"

#include "monitor/display/monitor_list.h"
#include "monitor/module.h"
#include "monitor/service/monitor_data.h"
#include "monitor/windows/window_list.h"

#include <cstddef>
#include <new>

namespace vorlen {

namespace {

using monitor_internal::GetMonitorData;

// An empty vector that is never destroyed: the runtime may call its table after the module's
// static objects have been destroyed. An empty vector owns no memory, so nothing leaks.
template <typename Record>
class EmptyVector {
public:
    EmptyVector() { new (memory) std::vector<Record>; }

    const std::vector<Record>& get() const {
        return *std::launder(reinterpret_cast<const std::vector<Record>*>(memory));
    }

private:
    alignas(std::vector<Record>) std::byte memory[sizeof(std::vector<Record>)]{};
};

// Not local to the functions: such statics take a lock, for which the end of the process must not
// wait.
const EmptyVector<ui::WindowInfo> noWindows;
const EmptyVector<ui::MonitorInfo> noMonitors;
const EmptyVector<std::string> noNames;
const EmptyVector<std::string> noNamesForWide;

const std::vector<ui::WindowInfo>& windowList() {
    MonitorData* const service = GetMonitorData();
    return service != nullptr ? service->GetWindowList() : noWindows.get();
}

const std::vector<ui::MonitorInfo>& monitorList() {
    MonitorData* const service = GetMonitorData();
    return service != nullptr ? service->GetMonitorList() : noMonitors.get();
}

const char* currentMonitorName() {
    MonitorData* const service = GetMonitorData();
    return service != nullptr ? service->GetCurrentMonitorName() : "";
}

const std::vector<std::string>& vorlenModelName(const char* deviceName) {
    const MonitorData* const service = GetMonitorData();
    return service != nullptr ? service->GetVorlenModelName(deviceName) : noNames.get();
}

const std::vector<std::string>& vorlenModelNameWide(const wchar_t* deviceName) {
    const MonitorData* const service = GetMonitorData();
    return service != nullptr ? service->GetVorlenModelName(deviceName) : noNamesForWide.get();
}

void setVorlenModelName(const char* modelName) {
    if (MonitorData* const service = GetMonitorData()) {
        service->SetVorlenModelName(modelName);
    }
}

const char* vorlenCameraName(const char* modelName) {
    const MonitorData* const service = GetMonitorData();
    return service != nullptr ? service->GetVorlenCameraNameByVorlenModelName(modelName) : "";
}

void useWindowList(bool use) {
    if (MonitorData* const service = GetMonitorData()) {
        service->UseWindowList(use);
    }
}

void updateMonitorList() {
    if (MonitorList* const list = MonitorList::Get()) {
        list->Update();
    }
}

void registerWindowComboBox(HWND comboBox) {
    if (WindowList* const list = WindowList::Get()) {
        list->RegisterComboBoxForUpdates(comboBox);
    }
}

void registerMonitorComboBox(HWND comboBox) {
    if (MonitorList* const list = MonitorList::Get()) {
        list->RegisterComboBoxForUpdates(comboBox);
    }
}

// The record at the index; null for an index outside the list.
template <typename Record>
const Record* at(const std::vector<Record>& records, std::int32_t index) {
    const auto position = static_cast<std::size_t>(index);
    return index >= 0 && position < records.size() ? &records[position] : nullptr;
}

HWND windowHandle(std::int32_t index) {
    const WindowList* const list = WindowList::Get();
    const ::WindowInfo* const window =
        list != nullptr ? at(list->GetCurrentWindows(), index) : nullptr;
    return window != nullptr ? window->hwnd : nullptr;
}

HMONITOR monitorHandle(std::int32_t index) {
    const MonitorList* const list = MonitorList::Get();
    const ::MonitorInfo* const monitor = list != nullptr ? at(list->GetMonitors(), index) : nullptr;
    return monitor != nullptr ? monitor->hMonitor : nullptr;
}

} // namespace

MonitorWrapper makeMonitorWrapper() {
    return {windowList,          monitorList,        currentMonitorName, vorlenModelName,
            vorlenModelNameWide, setVorlenModelName, vorlenCameraName,   useWindowList};
}

WindowEnumWrapper makeWindowEnumWrapper() {
    return {updateMonitorList, registerWindowComboBox, registerMonitorComboBox, windowHandle,
            monitorHandle};
}

} // namespace vorlen
