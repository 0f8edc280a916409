#include "monitor/service/monitor_data.h"

#include "platform/text.h"
#include "runtime/core.h"

namespace vorlen {

namespace {

using namespace std::chrono_literals;

constexpr std::chrono::nanoseconds staleAfter = 500ms;

MonitorList* adoptOrMakeMonitorList() {
    MonitorList* const existing = MonitorList::Get();
    return existing != nullptr ? existing : new MonitorList(false);
}

} // namespace

MonitorData::MonitorData()
    : windowList(std::make_unique<WindowList>()), monitorList(adoptOrMakeMonitorList()) {
    UpdateWindowList();
    UpdateMonitorList();
}

void MonitorData::RefreshMonitorListIfStale() {
    const auto age = std::chrono::steady_clock::now() - lastMonitorUpdate;
    if (monitors.empty() || age >= staleAfter || monitorUpdate == Update::abandoned) {
        UpdateMonitorList();
    }
}

const std::vector<ui::MonitorInfo>& MonitorData::GetMonitorList() {
    RefreshMonitorListIfStale();
    return monitors;
}

const char* MonitorData::GetCurrentMonitorName() {
    RefreshMonitorListIfStale();
    return VorlenCore::Instance().GetMonitorName().c_str();
}

void MonitorData::SetCurrentMonitorName(const char* name) {
    VorlenCore::Instance().SetMonitorName(name);
}

void MonitorData::SetCurrentMonitorName(const wchar_t* name) {
    VorlenCore::Instance().SetMonitorName(lowBytes(name));
}

_VLRect MonitorData::GetCurrentMonitorRect() {
    RefreshMonitorListIfStale();
    // Converted to unsigned, a negative index is larger than every list.
    const auto index = static_cast<std::uint32_t>(VorlenCore::Instance().GetMonitorIndex());
    if (index >= monitors.size()) {
        return {};
    }
    const ui::MonitorInfo& current = monitors[index];
    return {current.x, current.y, current.width, current.height};
}

const std::string& MonitorData::GetMonitorModelName() const {
    return VorlenCore::Instance().GetMonitorModelName();
}

void MonitorData::SetMonitorModelName(const std::string& name) {
    VorlenCore::Instance().SetMonitorModelName(name);
}

const std::vector<std::string>& MonitorData::GetVorlenModelName(const char* deviceName) const {
    return VorlenCore::Instance().GetVorlenModelName(deviceName);
}

const std::vector<std::string>& MonitorData::GetVorlenModelName(const wchar_t* deviceName) const {
    return VorlenCore::Instance().GetVorlenModelName(lowBytes(deviceName));
}

void MonitorData::SetVorlenModelName(const char* modelName) {
    VorlenCore::Instance().SetVorlenModelName(modelName);
}

void MonitorData::SetVorlenModelName(const wchar_t* modelName) {
    VorlenCore::Instance().SetVorlenModelName(lowBytes(modelName));
}

const char* MonitorData::GetVorlenCameraNameByVorlenModelName(const char* modelName) const {
    return VorlenCore::Instance().GetDefaultCameraNameByModelName(modelName).c_str();
}

const char* MonitorData::GetVorlenCameraNameByVorlenModelName(const wchar_t* modelName) const {
    return VorlenCore::Instance().GetDefaultCameraNameByModelName(lowBytes(modelName)).c_str();
}

} // namespace vorlen
