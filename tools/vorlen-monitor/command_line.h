#pragma once

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

// What the user asked for: one alternative per subcommand.
using Request = std::variant<Information, MonitorsOptions>;

// The arguments of this process in UTF-8, the program's name left out.
std::vector<std::string> commandLineArguments();

// Throws a Failure for arguments that make no sense.
Request parseCommandLine(const std::vector<std::string>& arguments);

} // namespace vorlen::tool
