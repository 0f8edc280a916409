#include "tools/vorlen-monitor/status_command.h"

#include "platform/environment.h"
#include "platform/safe_text.h"
#include "tools/vorlen-monitor/failure.h"
#include "tools/vorlen-monitor/libraries.h"
#include "tools/vorlen-monitor/monitors_command.h"
#include "vorlen/diagnostics.h"
#include "vorlen/status.h"

#include <windows.h>

#include <nlohmann/json.hpp>

namespace vorlen::tool {

namespace {

constexpr const wchar_t* kitModelsVariable = L"VORLEN_KIT_MODELS";

// The text of a code; for a code that is not in the table, the text of UNKNOWN_STATUS.
std::string messageFor(const std::unordered_map<VLStatus, std::string>& messages,
                       std::int32_t code) {
    const auto known = messages.find(static_cast<VLStatus>(code));
    return known != messages.end() ? known->second : messages.at(UNKNOWN_STATUS);
}

std::string nameOf(std::int32_t code) {
    const char* const name = statusName(code);
    return name != nullptr ? name : statusName(UNKNOWN_STATUS);
}

} // namespace

std::wstring kitModels() {
    return environmentText(kitModelsVariable);
}

void setKitModels(const std::wstring& models) {
    if (SetEnvironmentVariableW(kitModelsVariable, models.c_str()) == FALSE) {
        throw Failure(ExitCode::internal,
                      "cannot set VORLEN_KIT_MODELS: " + systemError(GetLastError()));
    }
}

void addKitModels(const std::vector<std::string>& names) {
    if (names.empty()) {
        return;
    }
    std::wstring models = kitModels();
    for (const std::string& name : names) {
        if (name.empty() || name.find(';') != std::string::npos) {
            throw Failure(ExitCode::usage,
                          "\"" + name +
                              "\" is not a model name: give --kit-model one name of "
                              "at least one character and without ';'");
        }
        models += (models.empty() ? L"" : L";") + toUtf16Lossy(name);
    }
    setKitModels(models);
}

MonitorStatus readStatus(const Service& service) {
    const bool ok = service.function<decltype(::checkMonitorStatus)>("checkMonitorStatus")();
    auto* const getLastMonitorStatus =
        service.function<decltype(monitor_internal::getLastMonitorStatus)>("getLastMonitorStatus");
    auto* const getCheckedMonitor =
        service.function<decltype(monitor_internal::getCheckedMonitor)>("getCheckedMonitor");
    MonitorStatus status{ok, getLastMonitorStatus(), std::nullopt};
    MonitorListItem monitor{};
    if (getCheckedMonitor(&monitor)) {
        status.monitor = monitor;
    }
    return status;
}

std::string statusLine(std::int32_t code) {
    return std::to_string(code) + " " + nameOf(code) + ": " + messageFor(StatusShortMessages, code);
}

std::string statusText(const MonitorStatus& status) {
    std::string text = statusLine(status.code) + "\n";
    if (const std::string advice = messageFor(StatusMessages, status.code); !advice.empty()) {
        text += advice + "\n";
    }
    if (status.monitor) {
        text += monitorsTable({*status.monitor});
    }
    return text;
}

nlohmann::ordered_json statusJson(const MonitorStatus& status) {
    nlohmann::ordered_json document = {
        {"ok", status.ok},
        {"code", status.code},
        {"name", nameOf(status.code)},
        {"shortMessage", messageFor(StatusShortMessages, status.code)},
        {"message", messageFor(StatusMessages, status.code)},
        {"monitor", nullptr}};
    if (status.monitor) {
        document["monitor"] = monitorsJson({*status.monitor}).front();
    }
    return document;
}

} // namespace vorlen::tool
