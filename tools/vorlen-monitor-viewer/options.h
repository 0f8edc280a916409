#pragma once

#include <optional>
#include <string>
#include <vector>

namespace vorlen::viewer {

// What the command line asks for. Texts are UTF-8.
struct Options {
    std::optional<std::string> replay;  // the file of a recording; nothing: this desktop
    std::optional<std::string> picture; // the file of the picture to draw instead of staying open
    std::vector<std::string> kitModels; // in addition to the runtime's
    std::optional<std::string> help;    // a text to show instead of anything else
};

// Whether the arguments ask for a picture, also when they are wrong otherwise.
bool askForPicture(const std::vector<std::string>& arguments);

// Throws a tool::Failure for arguments that are not understood. Reads no file.
Options parseOptions(const std::vector<std::string>& arguments);

} // namespace vorlen::viewer
