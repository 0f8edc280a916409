#include "snapshot/redaction.h"
#include "tools/vorlen-monitor/command_line.h"
#include "tools/vorlen-monitor/failure.h"
#include "tools/vorlen-monitor/libraries.h"
#include "tools/vorlen-monitor/monitors_command.h"
#include "tools/vorlen-monitor/output.h"
#include "tools/vorlen-monitor/record_command.h"
#include "tools/vorlen-monitor/status_command.h"
#include "tools/vorlen-monitor/text.h"
#include "tools/vorlen-monitor/version_command.h"
#include "tools/vorlen-monitor/watch_command.h"
#include "tools/vorlen-monitor/windows_command.h"

#include <nlohmann/json.hpp>

#include <exception>
#include <string>
#include <variant>

namespace vorlen::tool {

namespace {

ExitCode print(const std::string& text) {
    Output().write(text);
    return ExitCode::success;
}

ExitCode carryOut(const Information& information) {
    return print(information.text);
}

ExitCode carryOut(const VersionOptions&) {
    const Versions versions = readVersions();
    if (const std::string warning = versionWarning(versions); !warning.empty()) {
        complain(warning);
    }
    return print(versionText(versions));
}

ExitCode carryOut(const MonitorsOptions& options) {
    const auto monitors = withService(readMonitors);
    return print(options.json ? jsonText(monitorsJson(monitors)) : monitorsTable(monitors));
}

ExitCode carryOut(const WindowsOptions& options) {
    const auto windows = withService(options.all ? readAllWindows : readCapturableWindows);
    return print(options.json ? jsonText(windowsJson(windows, options.all))
                              : windowsTable(windows, options.all));
}

ExitCode carryOut(const StatusOptions& options) {
    addKitModels(options.kitModels);
    const MonitorStatus status = withService(readStatus);
    print(options.json ? jsonText(statusJson(status)) : statusText(status));
    return status.ok ? ExitCode::success : ExitCode::checkNotPassed;
}

ExitCode carryOut(const WatchOptions& options) {
    withService([&](const Service& service) {
        watch(service, options, Output());
        return 0;
    });
    return ExitCode::success;
}

ExitCode carryOut(const OverviewOptions& options) {
    addKitModels(options.kitModels);
    return print(withService([](const Service& service) {
        return "Monitors\n" + monitorsTable(readMonitors(service)) + "\nStatus\n" +
               statusText(readStatus(service)) + "\nWindows\n" +
               windowsTable(readCapturableWindows(service), false);
    }));
}

ExitCode carryOut(const RecordOptions& options) {
    addKitModels(options.kitModels);
    snapshot::Reading reading = readLiveDesktop();
    if (options.redact) {
        snapshot::Redaction().redact(reading);
    }
    writeRecording(reading, options.file);
    return print(recordingSummary(reading, options.file));
}

ExitCode run() {
    try {
        const Request request = parseCommandLine(commandLineArguments());
        return std::visit([](const auto& options) { return carryOut(options); }, request);
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

} // namespace
} // namespace vorlen::tool

int main() {
    return static_cast<int>(vorlen::tool::run());
}
