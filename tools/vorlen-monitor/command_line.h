#pragma once

#include <chrono>
#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace vorlen::tool {

// A text to print, with nothing else to do: the help or the version.
struct Information {
    std::string text;
};

struct MonitorsOptions {
    bool json = false;
};

struct WindowsOptions {
    bool json = false;
    bool all = false; // also those that are not capturable, with the reason
};

struct StatusOptions {
    bool json = false;
    std::vector<std::string> kitModels; // model names that the runtime is to recognise, too
};

struct WatchOptions {
    bool json = false;
    bool eventsOnly = false; // windows as events report them; their list is not read again
    std::optional<std::chrono::seconds> duration; // nothing: until Ctrl+C
};

// Monitors, status and windows together, for a person.
struct OverviewOptions {
    std::vector<std::string> kitModels;
};

// What the user asked for: one alternative per subcommand.
using Request = std::variant<Information, MonitorsOptions, WindowsOptions, StatusOptions,
                             WatchOptions, OverviewOptions>;

// The arguments of this process in UTF-8, the program's name left out.
std::vector<std::string> commandLineArguments();

// Throws a Failure for arguments that make no sense.
Request parseCommandLine(const std::vector<std::string>& arguments);

} // namespace vorlen::tool
