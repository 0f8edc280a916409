#include "tools/vorlen-monitor/doctor/doctor_command.h"

#include "platform/text.h"
#include "snapshot/redaction.h"
#include "tools/vorlen-monitor/libraries.h"
#include "tools/vorlen-monitor/monitors_command.h"
#include "tools/vorlen-monitor/status_command.h"
#include "tools/vorlen-monitor/windows_command.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace vorlen::tool {

namespace {

void replace(VLChar16 (&field)[VORLEN_MONITOR_TEXT_UNITS], std::wstring text) {
    text.resize(VORLEN_MONITOR_TEXT_UNITS - 1);
    std::ranges::copy(text, std::begin(field));
}

void redact(MonitorListItem& monitor, snapshot::Redaction& redaction) {
    replace(monitor.deviceName, redaction.withoutUser(textOf(monitor.deviceName)));
    replace(monitor.friendlyName, redaction.withoutUser(textOf(monitor.friendlyName)));
    replace(monitor.monitorId, redaction.serialNumber(textOf(monitor.monitorId)));
}

} // namespace

Examination askLibrary(const Service& service, snapshot::Reading reading) {
    Examination examination;
    examination.reading = std::move(reading);
    examination.monitors = readMonitors(service);
    for (const WindowRow& window : readCapturableWindows(service)) {
        examination.listedWindows.push_back(window.handle);
    }
    examination.status = readStatus(service);
    examination.kitModels = kitModelsIn(kitModels());
    return examination;
}

void redact(Examination& examination) {
    snapshot::Redaction redaction;
    redaction.redact(examination.reading);
    for (MonitorListItem& monitor : examination.monitors) {
        redact(monitor, redaction);
    }
    if (examination.status.monitor) {
        redact(*examination.status.monitor, redaction);
    }
    for (std::wstring& model : examination.kitModels) {
        model = redaction.withoutUser(model);
    }
}

} // namespace vorlen::tool
