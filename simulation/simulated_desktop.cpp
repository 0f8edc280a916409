#include "simulation/simulated_desktop.h"

#include <utility>

namespace simulation {

const std::set<std::string> SimulatedDesktop::displayFunctions = {
    "DisplayConfigGetDeviceInfo",  "EnumDisplayMonitors", "EnumDisplaySettingsW",
    "GetDisplayConfigBufferSizes", "GetMonitorInfoW",     "QueryDisplayConfig"};

const std::set<std::string> SimulatedDesktop::windowFunctions = {
    "DwmGetWindowAttribute", "EnumWindows",     "GetAncestor",
    "GetClassNameW",         "GetShellWindow",  "GetWindowLongW",
    "GetWindowTextLengthW",  "GetWindowTextW",  "IsWindow",
    "IsWindowVisible",       "SetWinEventHook", "UnhookWinEvent",
    "GetModuleHandleExW"};

const std::set<std::string> SimulatedDesktop::wmiFunctions = {
    "CoCreateInstance",      "CoInitializeEx",     "CoInitializeSecurity",
    "CoSetProxyBlanket",     "CoUninitialize",     "SafeArrayAccessData",
    "SafeArrayGetLBound",    "SafeArrayGetUBound", "SafeArrayGetVartype",
    "SafeArrayUnaccessData", "SysAllocString",     "SysFreeString",
    "VariantClear",          "VariantInit"};

SimulatedDesktop::SimulatedDesktop(HMODULE image, std::set<std::string> absentFunctions)
    : redirects(image, std::move(absentFunctions)), clock(redirects, journal),
      monitors(redirects, journal), displayPaths(redirects, journal),
      comboBoxes(redirects, journal), windows(redirects, journal), cloaking(redirects, journal),
      eventHooks(redirects, journal), wmi(redirects, journal) {}

SimulatedMonitor& SimulatedDesktop::addMonitor(const std::wstring& deviceName,
                                               const std::wstring& friendlyName,
                                               const DisplayMode& mode) {
    displayPaths.add(deviceName, friendlyName,
                     LR"(\\?\MONITOR#)" + friendlyName + L"#1#{e6f07b5f}");
    return monitors.add(deviceName, mode);
}

std::vector<std::string> SimulatedDesktop::displayCalls() const {
    return callsOf(displayFunctions);
}

std::vector<std::string> SimulatedDesktop::windowCalls() const {
    return callsOf(windowFunctions);
}

std::vector<std::string> SimulatedDesktop::callsOf(const std::set<std::string>& functions) const {
    std::vector<std::string> result = journal.calls();
    std::erase_if(result, [&](const auto& call) { return !functions.contains(call); });
    return result;
}

} // namespace simulation
