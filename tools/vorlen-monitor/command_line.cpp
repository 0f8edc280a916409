#include "tools/vorlen-monitor/command_line.h"

#include "platform/text.h"
#include "tools/vorlen-monitor/failure.h"

#include <windows.h>

#include <CLI/CLI.hpp>
#include <shellapi.h>

#include <algorithm>
#include <memory>
#include <optional>

namespace vorlen::tool {

namespace {

constexpr const char* programName = "vorlen-monitor";

std::string nameWithProgram(const CLI::App& app) {
    return app.get_parent() == nullptr ? programName : programName + (" " + app.get_name());
}

std::string seeHelp(const CLI::App& app) {
    return "see " + nameWithProgram(app) + " --help";
}

std::string commandNames(const CLI::App& app) {
    std::string names;
    for (const CLI::App* const command : app.get_subcommands({})) {
        names += (names.empty() ? "" : ", ") + command->get_name();
    }
    return names;
}

// The subcommand that the arguments name, or the program when they name none.
const CLI::App& innermost(const CLI::App& app) {
    const auto chosen = app.get_subcommands();
    return chosen.empty() ? app : *chosen.front();
}

// Only the first argument that is not understood is reported.
[[noreturn]] void refuse(const std::string& argument, const CLI::App& app) {
    std::string problem;
    if (argument.starts_with('-')) {
        problem = "unknown option \"" + argument + "\"";
    } else if (app.get_parent() == nullptr) {
        problem = "unknown command \"" + argument + "\"; the commands are: " + commandNames(app);
    } else {
        problem = "unexpected argument \"" + argument + "\" for " + nameWithProgram(app);
    }
    throw Failure(ExitCode::usage, problem + "; " + seeHelp(app));
}

void refuseRest(const CLI::App& app) {
    for (const CLI::App* const level : {&app, &innermost(app)}) {
        if (const std::vector<std::string> rest = level->remaining(); !rest.empty()) {
            refuse(rest.front(), *level);
        }
    }
}

// The subcommands, and the values of their options.
class Commands {
public:
    explicit Commands(CLI::App& app)
        : monitors(app.add_subcommand("monitors", "List the monitors of the desktop")),
          windows(app.add_subcommand("windows", "List the capturable windows")),
          status(app.add_subcommand("status", "Check how the kit monitor is set up")),
          watch(app.add_subcommand("watch", "Print changes of the monitors and windows")),
          overview(app.add_subcommand("overview", "Show monitors, status and windows")),
          doctor(app.add_subcommand("doctor", "Explain what prevents a 3-D picture")),
          record(app.add_subcommand("record", "Save what Windows reports about the desktop")) {
        addFlag(monitors, "--json", "Print a JSON array instead of a table", monitorsOptions.json);
        addFlag(windows, "--json", "Print a JSON array instead of a table", windowsOptions.json);
        addFlag(windows, "--all", "List every window, with the reason if it is not capturable",
                windowsOptions.all);
        addFlag(status, "--json", "Print a JSON object instead of text", statusOptions.json);
        addKitModel(status, statusOptions.kitModels);
        addFlag(watch, "--json", "Print a JSON object a line", watchOptions.json);
        addFlag(watch, "--events-only",
                "Do not read the window list again each second: show only what events report",
                watchOptions.eventsOnly);
        watch->add_option("--seconds", seconds, "End after this time, not only at Ctrl+C")
            ->check(CLI::Range(1, longestWatchSeconds));
        watch->footer("A change of a window that no event had reported is found when the list is "
                      "read again,\nand marked: (unreported) at the end of the line, or "
                      "\"unreported\":true in JSON.");
        addKitModel(overview, overviewOptions.kitModels);
        addFlag(doctor, "--json", "Print a JSON object instead of text", doctorOptions.json);
        addFlag(doctor, "--redact",
                "Replace titles, serial numbers and the user's name by placeholders",
                doctorOptions.redact);
        addKitModel(doctor, doctorOptions.kitModels);
        record->add_option("FILE", recordOptions.file, "The file to write, in JSON")
            ->required()
            ->type_name("");
        addFlag(record, "--redact",
                "Replace titles, serial numbers and the user's name by placeholders",
                recordOptions.redact);
        addKitModel(record, recordOptions.kitModels);
    }

    // The request, after the arguments were parsed; nothing when they name no subcommand.
    std::optional<Request> chosen() {
        if (monitors->parsed()) {
            return monitorsOptions;
        }
        if (windows->parsed()) {
            return windowsOptions;
        }
        if (status->parsed()) {
            return statusOptions;
        }
        if (watch->parsed()) {
            if (seconds != 0) {
                watchOptions.duration = std::chrono::seconds(seconds);
            }
            return watchOptions;
        }
        if (doctor->parsed()) {
            return doctorOptions;
        }
        if (record->parsed()) {
            return recordOptions;
        }
        return overview->parsed() ? std::optional<Request>(overviewOptions) : std::nullopt;
    }

private:
    static void addFlag(CLI::App* command, const char* name, const char* help, bool& value) {
        command->add_flag(name, value, help)->disable_flag_override();
    }

    static void addKitModel(CLI::App* command, std::vector<std::string>& names) {
        command->add_option("--kit-model", names, "The name of another kit model (repeatable)")
            ->type_name("NAME")
            ->expected(1)
            ->allow_extra_args(false)
            ->multi_option_policy(CLI::MultiOptionPolicy::TakeAll);
    }

    static constexpr int longestWatchSeconds = 365 * 24 * 3600;

    MonitorsOptions monitorsOptions;
    WindowsOptions windowsOptions;
    StatusOptions statusOptions;
    WatchOptions watchOptions;
    OverviewOptions overviewOptions;
    DoctorOptions doctorOptions;
    RecordOptions recordOptions;
    int seconds = 0;
    CLI::App* monitors;
    CLI::App* windows;
    CLI::App* status;
    CLI::App* watch;
    CLI::App* overview;
    CLI::App* doctor;
    CLI::App* record;
};

// The error that CLI11 found, as one line.
std::string problemOf(const CLI::ParseError& error) {
    std::string text = error.what();
    std::ranges::replace(text, '\n', ' ');
    // CLI11's message for a flag with a value, such as --json=yes, does not help a user.
    const std::string flagWithValue = " was given a disallowed flag override";
    if (text.ends_with(flagWithValue)) {
        text.resize(text.size() - flagWithValue.size());
        text = "option " + text + " takes no value";
    }
    return text;
}

// Parses the arguments into the options of the subcommands; returns the request of --help and
// --version.
std::optional<Request> parseWith(CLI::App& app, const std::vector<std::string>& arguments) {
    try {
        // CLI11 takes the arguments from the end of the vector.
        app.parse(std::vector<std::string>(arguments.rbegin(), arguments.rend()));
        return std::nullopt;
    } catch (const CLI::CallForHelp&) {
        return Information{app.help()};
    } catch (const CLI::CallForVersion&) {
        return VersionOptions{};
    } catch (const CLI::ParseError& error) {
        throw Failure(ExitCode::usage, problemOf(error) + "; " + seeHelp(innermost(app)));
    }
}

} // namespace

std::vector<std::string> commandLineArguments() {
    int count = 0;
    const std::unique_ptr<LPWSTR, decltype(&LocalFree)> values(
        CommandLineToArgvW(GetCommandLineW(), &count), LocalFree);
    if (!values) {
        throw Failure(ExitCode::internal,
                      "cannot read the command line: " + systemError(GetLastError()));
    }
    std::vector<std::string> arguments;
    for (int i = 1; i < count; ++i) {
        arguments.push_back(toUtf8Lossy(values.get()[i]));
    }
    return arguments;
}

CommandLine parseCommandLine(const std::vector<std::string>& arguments) {
    CLI::App app("Shows what the monitor library knows about the desktop.", programName);
    std::string file;
    // In front of --version, which ends the evaluation of the options.
    const CLI::Option* const replay =
        app.add_option("--replay", file, "Run the command on the desktop of a recording")
            ->type_name("FILE");
    app.set_version_flag("--version", "", "Print the versions of program and libraries and exit");
    app.set_help_flag("-h,--help", "Print this help and exit");
    app.footer("Exit status: 0 success; 1 the status check was not passed, or the doctor found an\n"
               "error; 2 wrong command line or recording; 3 libraries unusable; 4 output not\n"
               "written; 5 other error.");
    app.allow_windows_style_options(false);
    app.allow_extras();
    app.require_subcommand(0, 1);

    Commands commands(app);
    std::optional<Request> request = parseWith(app, arguments);
    if (!request) {
        refuseRest(app);
        request = commands.chosen();
    }
    if (!request) {
        throw Failure(ExitCode::usage, "no command given; the commands are: " + commandNames(app) +
                                           "; " + seeHelp(app));
    }
    return {replay->empty() ? std::nullopt : std::optional(file), *std::move(request)};
}

} // namespace vorlen::tool
