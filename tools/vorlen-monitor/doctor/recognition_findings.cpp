#include "platform/text.h"
#include "tools/vorlen-monitor/doctor/findings.h"
#include "tools/vorlen-monitor/doctor/words.h"
#include "tools/vorlen-monitor/text.h"
#include "vorlen/status.h"

#include <windows.h>

#include <algorithm>
#include <cwctype>
#include <map>

namespace vorlen::tool {

namespace {

bool noneRecognised(const Examination& examination) {
    return examination.status.code == MONITOR_NOT_CONNECTED;
}

bool configurationWasRead(const Examination& examination) {
    const auto& configuration = examination.reading.displayConfiguration;
    return configuration.sizesStatus == ERROR_SUCCESS && configuration.queryStatus == ERROR_SUCCESS;
}

std::string deviceNameOf(const snapshot::DisplayPath& path) {
    return path.sourceName.gdiDeviceName.empty() ? "A monitor without a device name"
                                                 : toUtf8Lossy(path.sourceName.gdiDeviceName);
}

// For a finding about the monitors of a path.
std::vector<std::string> monitorsOf(const snapshot::DisplayPath& path) {
    return path.sourceName.gdiDeviceName.empty()
               ? std::vector<std::string>()
               : std::vector{toUtf8Lossy(path.sourceName.gdiDeviceName)};
}

std::string monitorNames(const std::vector<MonitorListItem>& monitors) {
    std::vector<std::string> names;
    for (const MonitorListItem& monitor : monitors) {
        const std::wstring name = textOf(monitor.friendlyName);
        names.push_back(fieldText(monitor.deviceName) +
                        (name.empty() ? " without a name" : " " + inQuotes(name)));
    }
    return enumerated(names);
}

std::string givenModels(const std::vector<std::wstring>& models) {
    if (models.empty()) {
        return " No kit model is given in VORLEN_KIT_MODELS or with --kit-model.";
    }
    std::vector<std::string> names;
    std::ranges::transform(models, std::back_inserter(names), inQuotes);
    return " Given kit models: " + enumerated(names) + ".";
}

std::wstring inLowerCase(std::wstring text) {
    std::ranges::transform(text, text.begin(), std::towlower);
    return text;
}

std::wstring withoutSpaces(std::wstring text) {
    std::erase_if(text, [](wchar_t unit) { return std::iswspace(unit) != 0 || unit == L'\u00A0'; });
    return text;
}

// In what a monitor's name differs from a kit model that it would otherwise contain; empty when it
// contains it, or differs in something else.
std::string difference(const std::wstring& name, const std::wstring& model) {
    const auto contains = [](const std::wstring& text, const std::wstring& part) {
        return !part.empty() && text.find(part) != std::wstring::npos;
    };
    if (contains(name, model)) {
        return {};
    }
    if (contains(inLowerCase(name), inLowerCase(model))) {
        return "case";
    }
    if (contains(withoutSpaces(name), withoutSpaces(model))) {
        return "spaces";
    }
    return contains(inLowerCase(withoutSpaces(name)), inLowerCase(withoutSpaces(model)))
               ? "case and spaces"
               : "";
}

bool isInPortableComputer(std::uint32_t outputTechnology) {
    constexpr DISPLAYCONFIG_VIDEO_OUTPUT_TECHNOLOGY connections[] = {
        DISPLAYCONFIG_OUTPUT_TECHNOLOGY_INTERNAL, DISPLAYCONFIG_OUTPUT_TECHNOLOGY_LVDS,
        DISPLAYCONFIG_OUTPUT_TECHNOLOGY_DISPLAYPORT_EMBEDDED,
        DISPLAYCONFIG_OUTPUT_TECHNOLOGY_UDI_EMBEDDED};
    return std::ranges::any_of(connections, [=](auto connection) {
        return static_cast<std::uint32_t>(connection) == outputTechnology;
    });
}

// Whether all requests for the name of a built-in panel succeeded. Most of these panels have none.
bool isPanelWithoutName(const snapshot::DisplayConfiguration& configuration,
                        const std::wstring& deviceName) {
    return std::ranges::any_of(configuration.paths, [&](const snapshot::DisplayPath& path) {
        return path.sourceName.status == ERROR_SUCCESS &&
               path.sourceName.gdiDeviceName == deviceName &&
               path.targetName.status == ERROR_SUCCESS && path.targetName.friendlyName.empty() &&
               isInPortableComputer(path.outputTechnology);
    });
}

// Why the library found no name for a monitor, although the display configuration was read.
std::string whyWithoutName(const snapshot::DisplayConfiguration& configuration,
                           const std::wstring& deviceName) {
    const snapshot::DisplayPath* failed = nullptr;
    std::int32_t sourceStatus = ERROR_SUCCESS;
    for (const snapshot::DisplayPath& path : configuration.paths) {
        if (path.sourceName.status != ERROR_SUCCESS) {
            sourceStatus = path.sourceName.status;
        } else if (path.sourceName.gdiDeviceName == deviceName) {
            if (path.targetName.status == ERROR_SUCCESS) {
                return "All requests succeeded, and the name is empty.";
            }
            failed = &path;
        }
    }
    if (failed != nullptr) {
        return "The request for the target name failed with " +
               displayStatusText(failed->targetName.status) + ".";
    }
    if (sourceStatus != ERROR_SUCCESS) {
        return "No display path has its device name. The request for the source name of a path "
               "failed with " +
               displayStatusText(sourceStatus) + ".";
    }
    return "No display path has its device name.";
}

} // namespace

std::vector<Finding> noKitMonitor(const Examination& examination) {
    if (!noneRecognised(examination)) {
        return {};
    }
    const auto& monitors = examination.monitors;
    return {{Severity::error,
             (monitors.empty() ? "The library lists no monitor."
                               : "The library lists " + monitorNames(monitors) +
                                     ", and the runtime recognises none of them.") +
                 givenModels(examination.kitModels),
             "Without a kit monitor there is no 3-D picture (code 17).",
             "Check that the kit monitor is switched on, connected and set to this input, and that "
             "Windows shows it under Settings > System > Display. The development runtime "
             "recognises only models that are given: name the kit monitor's with --kit-model."}};
}

std::vector<Finding> kitNameDiffers(const Examination& examination) {
    if (!noneRecognised(examination)) {
        return {};
    }
    std::vector<Finding> findings;
    for (const snapshot::DisplayPath& path : examination.reading.displayConfiguration.paths) {
        const std::wstring& name = path.targetName.friendlyName;
        for (const std::wstring& model : examination.kitModels) {
            if (const std::string differs = difference(name, model); !differs.empty()) {
                findings.push_back(
                    {Severity::error,
                     deviceNameOf(path) + " is named " + inQuotes(name) + ", and the kit model " +
                         inQuotes(model) + ". They differ in " + differs + ".",
                     "The runtime recognises a kit monitor only when its name contains the name of "
                     "the kit model exactly.",
                     "If it is the kit monitor, give its name as Windows reports it, in "
                     "VORLEN_KIT_MODELS or with --kit-model.",
                     monitorsOf(path)});
            }
        }
    }
    return findings;
}

std::vector<Finding> genericName(const Examination& examination) {
    if (!noneRecognised(examination)) {
        return {};
    }
    std::vector<Finding> findings;
    for (const snapshot::DisplayPath& path : examination.reading.displayConfiguration.paths) {
        if (path.targetName.friendlyName.starts_with(L"Generic ")) {
            findings.push_back(
                {Severity::warning,
                 deviceNameOf(path) + " is named " + inQuotes(path.targetName.friendlyName) + ".",
                 "This is the name of a driver. Windows has not read the model from the monitor, "
                 "so the runtime cannot recognise it. It may be the kit monitor.",
                 "Connect the monitor directly, without switch, splitter, dock or adapter. If the "
                 "name stays, uninstall the monitor in the Device Manager and scan for hardware "
                 "changes.",
                 monitorsOf(path)});
        }
    }
    return findings;
}

std::vector<Finding> missingName(const Examination& examination) {
    if (!noneRecognised(examination) || !configurationWasRead(examination)) {
        return {};
    }
    const auto& configuration = examination.reading.displayConfiguration;
    std::vector<Finding> findings;
    for (const MonitorListItem& monitor : examination.monitors) {
        if (!textOf(monitor.friendlyName).empty()) {
            continue;
        }
        const std::wstring deviceName = textOf(monitor.deviceName);
        const std::string seen =
            toUtf8Lossy(deviceName) + " has no name. " + whyWithoutName(configuration, deviceName);
        if (isPanelWithoutName(configuration, deviceName)) {
            findings.push_back({Severity::note,
                                seen,
                                "This is the built-in panel of a portable computer: most have no "
                                "name. The runtime recognises a kit monitor by its name.",
                                "Nothing, unless this panel is the kit monitor.",
                                {toUtf8Lossy(deviceName)}});
        } else {
            findings.push_back(
                {Severity::warning,
                 seen,
                 "The runtime recognises a kit monitor by its name. This may be the kit monitor.",
                 "Repeat the command: after sleep and while displays are changed, names can be "
                 "missing for a while. If the name stays empty, connect the monitor directly, "
                 "without switch, splitter, dock or adapter.",
                 {toUtf8Lossy(deviceName)}});
        }
    }
    return findings;
}

std::vector<Finding> displayConfigurationFailed(const Examination& examination) {
    if (configurationWasRead(examination)) {
        return {};
    }
    const auto& configuration = examination.reading.displayConfiguration;
    return {{Severity::warning,
             configuration.sizesStatus != ERROR_SUCCESS
                 ? "GetDisplayConfigBufferSizes returned " +
                       displayStatusText(configuration.sizesStatus) + "."
                 : "GetDisplayConfigBufferSizes announced " +
                       std::to_string(configuration.announcedPaths) + " paths and " +
                       std::to_string(configuration.announcedModes) +
                       " modes, and QueryDisplayConfig returned " +
                       displayStatusText(configuration.queryStatus) + ".",
             "The library has no names of monitors then, and recognises no kit monitor until it "
             "refreshes its list. This happens while displays are changed, for a while after "
             "sleep, and in remote sessions.",
             "Repeat the command. If the result stays, restart the computer, and install the "
             "driver of the graphics card again."}};
}

std::vector<Finding> clonedMonitor(const Examination& examination) {
    std::map<std::wstring, std::vector<std::wstring>> namesOfDevice;
    for (const snapshot::DisplayPath& path : examination.reading.displayConfiguration.paths) {
        if (!path.sourceName.gdiDeviceName.empty()) {
            namesOfDevice[path.sourceName.gdiDeviceName].push_back(path.targetName.friendlyName);
        }
    }
    const auto& judged = examination.status.monitor;
    std::vector<Finding> findings;
    for (const auto& [deviceName, names] : namesOfDevice) {
        if (names.size() < 2) {
            continue;
        }
        const bool withKit = (judged && textOf(judged->deviceName) == deviceName) ||
                             std::ranges::any_of(names, [&](const std::wstring& name) {
                                 return namesKitModel(examination, name);
                             });
        std::vector<std::string> quotations;
        std::ranges::transform(names, std::back_inserter(quotations), inQuotes);
        findings.push_back(
            {withKit                       ? Severity::error
             : noneRecognised(examination) ? Severity::warning
                                           : Severity::note,
             "The picture of " + toUtf8Lossy(deviceName) + " is shown on " +
                 std::to_string(names.size()) + " monitors: " + enumerated(quotations) + ".",
             withKit ? "The displays are duplicated, not extended (code 22). The kit monitor shows "
                       "the picture of another monitor, and the library knows only the name of the "
                       "first."
             : noneRecognised(examination)
                 ? "The displays are duplicated. The library knows only the name of the first, "
                   "which the runtime does not recognise. One of the others may be the kit monitor "
                   "(code 22)."
                 : "The displays are duplicated. The kit monitor is not one of them.",
             "Press Windows+P and choose Extend.",
             {toUtf8Lossy(deviceName)}});
    }
    return findings;
}

} // namespace vorlen::tool
