#include "tools/vorlen-monitor/command_line.h"
#include "tools/vorlen-monitor/failure.h"
#include "tools/vorlen-monitor/json_text.h"
#include "tools/vorlen-monitor/libraries.h"
#include "tools/vorlen-monitor/monitors_command.h"
#include "tools/vorlen-monitor/output.h"

#include <nlohmann/json.hpp>

#include <exception>
#include <string>
#include <variant>

namespace vorlen::tool {

namespace {

std::string answer(const Information& information) {
    return information.text;
}

std::string answer(const MonitorsOptions& options) {
    const std::vector<MonitorListItem> monitors = withService(
        [](const Service& service) { return readMonitors(service.exports().getMonitorList); });
    return options.json ? jsonText(monitorsJson(monitors)) : monitorsTable(monitors);
}

ExitCode run() {
    try {
        const Request request = parseCommandLine(commandLineArguments());
        Output().write(std::visit([](const auto& options) { return answer(options); }, request));
        return ExitCode::success;
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
