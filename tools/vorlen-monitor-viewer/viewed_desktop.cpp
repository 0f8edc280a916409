#include "tools/vorlen-monitor-viewer/viewed_desktop.h"

#include "runtime/registration.h"
#include "tools/vorlen-monitor-viewer/runtime_names.h"
#include "tools/vorlen-monitor/doctor/doctor_command.h"
#include "tools/vorlen-monitor/failure.h"
#include "tools/vorlen-monitor/libraries.h"
#include "tools/vorlen-monitor/monitors_command.h"

#include <utility>

namespace vorlen::viewer {

namespace {

template <typename Table>
const Table& registered(const Table* table) {
    if (table == nullptr) {
        throw tool::Failure(tool::ExitCode::libraries,
                            "libvorlen_monitor.dll has registered no functions with the runtime: "
                            "it is of another release");
    }
    return *table;
}

const MonitorWrapper& monitorTable(const tool::Service& service) {
    return registered(service.runtimeFunction<decltype(runtime_internal::GetMonitorWrapper)>(
        runtime_names::getMonitorWrapper)());
}

const WindowEnumWrapper& windowTable(const tool::Service& service) {
    return registered(service.runtimeFunction<decltype(runtime_internal::GetWindowEnumWrapper)>(
        runtime_names::getWindowEnumWrapper)());
}

// Whether the monitor is where the current one is. Without one, the rectangle is empty.
bool isAt(const MonitorListItem& monitor, const _VLRect& current) {
    return current.width != 0 && monitor.x == current.x && monitor.y == current.y &&
           monitor.width == current.width && monitor.height == current.height;
}

} // namespace

ViewedDesktop::ViewedDesktop(const tool::Service& usedService,
                             const snapshot::Reading* replayedReading)
    : service(usedService), replayed(replayedReading) {}

std::vector<ViewedMonitor> ViewedDesktop::monitors() const {
    const _VLRect current = service.function<decltype(::getMonitorRect)>("getMonitorRect")();
    const MonitorWrapper& table = monitorTable(service);
    std::vector<ViewedMonitor> monitors;
    for (const MonitorListItem& record : tool::readMonitors(service)) {
        const bool isKitModel = !table.getVorlenModelNameWide(record.deviceName).empty();
        monitors.push_back({record, isKitModel, isAt(record, current)});
    }
    return monitors;
}

void ViewedDesktop::updateMonitors() const {
    service.function<decltype(::updateMonitorList)>("updateMonitorList")();
}

std::vector<tool::WindowRow> ViewedDesktop::windows() const {
    return tool::readAllWindows(service, replayed);
}

void ViewedDesktop::fillMonitorBox(HWND box) const {
    windowTable(service).registerMonitorComboBox(box);
}

void ViewedDesktop::fillWindowBox(HWND box) const {
    windowTable(service).registerWindowComboBox(box);
}

HWND ViewedDesktop::listedWindow(int index) const {
    return windowTable(service).getWindowHandle(index);
}

tool::Examination ViewedDesktop::examine(snapshot::Reading reading) const {
    return tool::askLibrary(service, std::move(reading));
}

} // namespace vorlen::viewer
