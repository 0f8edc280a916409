#include "tools/vorlen-monitor/run.h"

#include "tools/vorlen-monitor/command_line.h"
#include "tools/vorlen-monitor/doctor/doctor_command.h"
#include "tools/vorlen-monitor/doctor/findings.h"
#include "tools/vorlen-monitor/doctor/report.h"
#include "tools/vorlen-monitor/failure.h"
#include "tools/vorlen-monitor/libraries.h"
#include "tools/vorlen-monitor/monitors_command.h"
#include "tools/vorlen-monitor/output.h"
#include "tools/vorlen-monitor/record_command.h"
#include "tools/vorlen-monitor/replay.h"
#include "tools/vorlen-monitor/status_command.h"
#include "tools/vorlen-monitor/text.h"
#include "tools/vorlen-monitor/version_command.h"
#include "tools/vorlen-monitor/watch_command.h"
#include "tools/vorlen-monitor/windows_command.h"

#include <windows.h>

#include <nlohmann/json.hpp>

#include <exception>
#include <optional>
#include <string>
#include <utility>
#include <variant>
#include <vector>

namespace vorlen::tool {

namespace {

ExitCode print(const std::string& text) {
    Output().write(text);
    return ExitCode::success;
}

// The functions carryOut() are given the reading whose desktop they show; null: that of this
// session.

ExitCode carryOut(const Information& information, const snapshot::Reading*) {
    return print(information.text);
}

ExitCode carryOut(const VersionOptions&, const snapshot::Reading* replayed) {
    if (replayed != nullptr) {
        return print(versionText(*replayed));
    }
    const Versions versions = readVersions();
    if (const std::string warning = versionWarning(versions); !warning.empty()) {
        complain(warning);
    }
    return print(versionText(versions));
}

ExitCode carryOut(const MonitorsOptions& options, const snapshot::Reading* replayed) {
    const auto monitors = withService(replayed, readMonitors);
    return print(options.json ? jsonText(monitorsJson(monitors)) : monitorsTable(monitors));
}

ExitCode carryOut(const WindowsOptions& options, const snapshot::Reading* replayed) {
    const auto windows = withService(replayed, [&](const Service& service) {
        return options.all ? readAllWindows(service, replayed) : readCapturableWindows(service);
    });
    return print(options.json ? jsonText(windowsJson(windows, options.all))
                              : windowsTable(windows, options.all));
}

ExitCode carryOut(const StatusOptions& options, const snapshot::Reading* replayed) {
    addKitModels(options.kitModels);
    const MonitorStatus status = withService(replayed, readStatus);
    print(options.json ? jsonText(statusJson(status)) : statusText(status));
    return status.ok ? ExitCode::success : ExitCode::checkNotPassed;
}

ExitCode carryOut(const WatchOptions& options, const snapshot::Reading* replayed) {
    withService(replayed, [&](const Service& service) {
        watch(service, options, Output());
        return 0;
    });
    return ExitCode::success;
}

ExitCode carryOut(const OverviewOptions& options, const snapshot::Reading* replayed) {
    addKitModels(options.kitModels);
    return print(withService(replayed, [](const Service& service) {
        return "Monitors\n" + monitorsTable(readMonitors(service)) + "\nStatus\n" +
               statusText(readStatus(service)) + "\nWindows\n" +
               windowsTable(readCapturableWindows(service), false);
    }));
}

ExitCode carryOut(const DoctorOptions& options, const snapshot::Reading* replayed) {
    addKitModels(options.kitModels);
    // In this order, a window that is opened between both is not missing in the library's list.
    snapshot::Reading reading = replayed != nullptr ? *replayed : readLiveDesktop();
    Examination examination = withService(
        replayed, [&](const Service& service) { return askLibrary(service, std::move(reading)); });
    if (options.redact) {
        redact(examination);
    }
    const std::vector<Finding> findings = examine(examination);
    print(options.json ? jsonText(doctorJson(examination.status, findings))
                       : doctorText(examination.status, findings));
    return prevents3d(findings) ? ExitCode::checkNotPassed : ExitCode::success;
}

ExitCode carryOut(const RecordOptions& options, const snapshot::Reading* replayed) {
    addKitModels(options.kitModels);
    const snapshot::Reading reading =
        forRecording(replayed != nullptr ? *replayed : readLiveDesktop(), options.redact);
    writeRecording(reading, options.file);
    return print(recordingSummary(reading, options.file));
}

// The library made a call for which the simulated desktop has no answer, on any thread. None of its
// code may run again, not even its cleanup.
void endAtWrongCall(const std::string& line) {
    complain(wrongCall(line));
    TerminateProcess(GetCurrentProcess(), static_cast<UINT>(ExitCode::internal));
}

// Nothing when the desktop of this session is shown.
std::optional<snapshot::Reading> readingToReplay(const CommandLine& commandLine) {
    if (!commandLine.replay || std::holds_alternative<Information>(commandLine.request)) {
        return std::nullopt;
    }
    return prepareReplay(*commandLine.replay, endAtWrongCall);
}

} // namespace

ExitCode run() {
    try {
        const CommandLine commandLine = parseCommandLine(commandLineArguments());
        const std::optional<snapshot::Reading> replayed = readingToReplay(commandLine);
        return std::visit(
            [&](const auto& options) { return carryOut(options, replayed ? &*replayed : nullptr); },
            commandLine.request);
    } catch (const Failure& failure) {
        complain(failure.what());
        return failure.exitCode();
    } catch (const std::exception& error) {
        complain(unexpected(&error));
    } catch (...) {
        complain(unexpected(nullptr));
    }
    return ExitCode::internal;
}

} // namespace vorlen::tool
