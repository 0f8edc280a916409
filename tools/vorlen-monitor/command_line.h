#pragma once

#include <chrono>
#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace vorlen::tool {

// The request for a text: the help.
struct Information {
    std::string text;
};

// The versions of this program and of the libraries that it loads.
struct VersionOptions {};

struct MonitorsOptions {
    bool json = false;
};

struct WindowsOptions {
    bool json = false;
    bool all = false; // also windows that are not capturable, with the reason
};

struct StatusOptions {
    bool json = false;
    std::vector<std::string> kitModels; // kit models in addition to the runtime's
};

struct WatchOptions {
    bool json = false;
    bool eventsOnly = false;                      // the window list is not read again
    std::optional<std::chrono::seconds> duration; // nothing: until Ctrl+C
};

// Monitors, status and windows together, as text.
struct OverviewOptions {
    std::vector<std::string> kitModels;
};

struct DoctorOptions {
    bool json = false;
    bool redact = false; // titles and the like are replaced by placeholders
    std::vector<std::string> kitModels;
};

struct RecordOptions {
    std::string file;
    bool redact = false; // titles and the like are replaced by placeholders
    std::vector<std::string> kitModels;
};

// What the user asked for: one alternative for each subcommand, and those of --help and --version.
using Request =
    std::variant<Information, VersionOptions, MonitorsOptions, WindowsOptions, StatusOptions,
                 WatchOptions, OverviewOptions, DoctorOptions, RecordOptions>;

struct CommandLine {
    std::optional<std::string> replay; // the file of a recording; nothing: this desktop
    Request request;
};

// The arguments of this process in UTF-8, without the program's name. Throws a Failure when the
// system cannot split the command line.
std::vector<std::string> commandLineArguments();

// Throws a Failure for arguments that are not understood. Reads no file.
CommandLine parseCommandLine(const std::vector<std::string>& arguments);

} // namespace vorlen::tool
