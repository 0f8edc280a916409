#include "runtime/core.h"

#include "runtime/complain.h"
#include "runtime/kit_models.h"

#include <algorithm>
#include <utility>

namespace vorlen {

namespace {

const std::string noText;
const std::vector<std::string> noModels;

} // namespace

VorlenCore& VorlenCore::Instance() {
    static VorlenCore core;
    return core;
}

VorlenCore::VorlenCore() : knownModels(kitModelsFromEnvironment()) {}

void VorlenCore::ClearMonitorList() {
    monitors.clear();
    modelsOfMonitor.clear();
    monitorIndex = -1;
}

void VorlenCore::AddMonitorItem(VORLEN_MONITOR_INFO monitor) {
    // In this order: after an exception modelsOfMonitor still has an entry for each monitor.
    modelsOfMonitor.resize(monitors.size() + 1);
    monitors.push_back(std::move(monitor));
    RecogniseMonitor(monitors.size() - 1);
}

const std::vector<VORLEN_MONITOR_INFO>& VorlenCore::GetMonitorItems() const {
    return monitors;
}

const std::string& VorlenCore::GetMonitorName() const {
    if (!monitorName.empty() || monitorIndex < 0) {
        return monitorName;
    }
    return monitors[static_cast<std::size_t>(monitorIndex)].friendlyName;
}

void VorlenCore::SetMonitorName(const std::string& name) {
    monitorName = name;
}

const std::string& VorlenCore::GetMonitorModelName() const {
    if (!monitorModelName.empty() || monitorIndex < 0) {
        return monitorModelName;
    }
    return modelsOfMonitor[static_cast<std::size_t>(monitorIndex)].front();
}

void VorlenCore::SetMonitorModelName(const std::string& name) {
    monitorModelName = name;
}

const std::vector<std::string>&
VorlenCore::GetVorlenModelName(const std::string& deviceName) const {
    for (std::size_t i = 0; i < monitors.size(); ++i) {
        if (monitors[i].deviceName == deviceName) {
            return modelsOfMonitor[i];
        }
    }
    return noModels;
}

void VorlenCore::SetVorlenModelName(const std::string& modelName) {
    if (modelName.empty()) {
        complain("an empty model name was given: give a name of at least one character");
        return;
    }
    if (std::ranges::find(knownModels, modelName) == knownModels.end()) {
        knownModels.push_back(modelName);
        monitorIndex = -1;
        for (std::size_t i = 0; i < monitors.size(); ++i) {
            RecogniseMonitor(i);
        }
    }
}

const std::string& VorlenCore::GetDefaultCameraNameByModelName(const std::string&) const {
    return noText;
}

std::vector<std::string> VorlenCore::ModelsIn(const std::string& friendlyName) const {
    std::vector<std::string> models;
    for (const std::string& model : knownModels) {
        if (friendlyName.find(model) != std::string::npos) {
            models.push_back(model);
        }
    }
    return models;
}

void VorlenCore::RecogniseMonitor(std::size_t index) {
    modelsOfMonitor[index] = ModelsIn(monitors[index].friendlyName);
    if (monitorIndex < 0 && !modelsOfMonitor[index].empty()) {
        monitorIndex = static_cast<std::int32_t>(index);
    }
}

} // namespace vorlen
