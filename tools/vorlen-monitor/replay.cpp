#include "tools/vorlen-monitor/replay.h"

#include "simulation/expect.h"
#include "simulation/variants.h"
#include "tools/vorlen-monitor/recording_file.h"
#include "tools/vorlen-monitor/records.h"
#include "tools/vorlen-monitor/status_command.h"

#include <wbemidl.h>

#include <algorithm>

namespace vorlen::tool {

namespace {

simulation::SimulatedMonitor simulated(const snapshot::Monitor& monitor) {
    simulation::SimulatedMonitor result;
    result.handle = handleOf<HMONITOR>(monitor.handle);
    result.informationReadable = monitor.informationRead;
    result.deviceName = monitor.deviceName;
    result.rectangle = {monitor.rectangle.left, monitor.rectangle.top, monitor.rectangle.right,
                        monitor.rectangle.bottom};
    if (monitor.currentMode) {
        const auto& [x, y, mode] = *monitor.currentMode;
        result.mode = simulation::DisplayMode{.x = x,
                                              .y = y,
                                              .width = static_cast<DWORD>(mode.width),
                                              .height = static_cast<DWORD>(mode.height),
                                              .frequency = static_cast<DWORD>(mode.frequency)};
    }
    return result;
}

// The paths get new ids. Those of a reading need not be unique: clones share a source, and a
// recording that was written by hand may have none.
void replayPaths(const snapshot::DisplayConfiguration& configuration,
                 simulation::SimulatedDesktop& desktop) {
    for (const snapshot::DisplayPath& path : configuration.paths) {
        simulation::SimulatedPath& added =
            desktop.displayPaths.add(path.sourceName.gdiDeviceName, path.targetName.friendlyName,
                                     path.targetName.devicePath);
        added.sourceNameStatus = path.sourceName.status;
        added.targetNameStatus = path.targetName.status;
    }
    const auto filled = static_cast<UINT32>(configuration.paths.size());
    desktop.displayPaths.announcedTooMany = std::max(configuration.announcedPaths, filled) - filled;
    if (configuration.sizesStatus != ERROR_SUCCESS) {
        desktop.journal.failAll("GetDisplayConfigBufferSizes", configuration.sizesStatus);
    }
    if (configuration.queryStatus != ERROR_SUCCESS) {
        desktop.journal.failAll("QueryDisplayConfig", configuration.queryStatus);
    }
}

snapshot::WmiProperty propertyOf(const snapshot::WmiObject& object, const wchar_t* name) {
    const auto found = std::ranges::find(object.properties, name, &snapshot::WmiProperty::name);
    if (found != object.properties.end()) {
        return *found;
    }
    snapshot::WmiProperty missing;
    missing.result = static_cast<HRESULT>(WBEM_E_NOT_FOUND);
    return missing;
}

// A value without a text for every type from which the library reads no text.
VARIANT variantOf(const snapshot::WmiProperty& property) {
    switch (property.type) {
    case VT_BSTR:
        return simulation::stringVariant(property.text);
    case VT_ARRAY | VT_I4:
        return simulation::unitsVariant(property.text);
    default:
        return {};
    }
}

simulation::WmiInstance simulated(const snapshot::WmiObject& object) {
    const snapshot::WmiProperty instanceName = propertyOf(object, L"InstanceName");
    const snapshot::WmiProperty serialNumberId = propertyOf(object, L"SerialNumberID");
    return {.instanceName = [=] { return variantOf(instanceName); },
            .serialNumberId = [=] { return variantOf(serialNumberId); },
            .instanceNameResult = instanceName.result,
            .serialNumberIdResult = serialNumberId.result};
}

void replayWmi(const snapshot::Wmi& wmi, simulation::SimulatedDesktop& desktop) {
    for (const snapshot::WmiObject& object : wmi.objects) {
        desktop.wmi.provider.instances.push_back(simulated(object));
    }
    for (const snapshot::WmiStep& step : wmi.steps) {
        if (SUCCEEDED(step.result)) {
            continue;
        }
        if (step.name == "IEnumWbemClassObject::Next") {
            // It failed when it had returned all objects of the reading.
            desktop.journal.fail(step.name, wmi.objects.size() + 1, step.result);
        } else {
            desktop.journal.failAll(step.name, step.result);
        }
    }
}

// A greater length than that of the title changes no answer, but the library takes memory for it.
std::int32_t replayedTitleLength(const snapshot::Window& window) {
    const auto longest = std::max(static_cast<std::int32_t>(window.title.size()), 1);
    return std::min(window.titleLength, longest);
}

simulation::SimulatedWindow simulated(const snapshot::Window& window) {
    simulation::SimulatedWindow result;
    result.handle = handleOf<HWND>(window.handle);
    result.title = window.title;
    result.titleLength = replayedTitleLength(window);
    result.className = window.className;
    result.exists = window.exists;
    result.visible = window.visible;
    result.style = window.style;
    result.extendedStyle = window.extendedStyle;
    result.root = handleOf<HWND>(window.root);
    result.cloakingResult = window.cloakingResult;
    result.cloaked = window.cloaked;
    return result;
}

} // namespace

snapshot::Reading prepareReplay(const std::string& file, void (*report)(const std::string& line)) {
    snapshot::Reading reading = readRecording(file);
    setKitModels(reading.process.kitModels);
    simulation::setReporter(report);
    return reading;
}

std::string wrongCall(const std::string& line) {
    return "the replay cannot go on after an error of the library: " + line;
}

void replay(const snapshot::Reading& reading, simulation::SimulatedDesktop& desktop) {
    desktop.journal.stopRecording();
    desktop.comboBoxes.areOfTheSystem = true;
    for (const snapshot::Monitor& monitor : reading.monitors) {
        desktop.monitors.all.push_back(simulated(monitor));
    }
    replayPaths(reading.displayConfiguration, desktop);
    replayWmi(reading.wmi, desktop);
    for (const snapshot::Window& window : reading.windows) {
        desktop.windows.add(simulated(window));
    }
    desktop.windows.shellWindow = handleOf<HWND>(reading.shellWindow);
}

} // namespace vorlen::tool
