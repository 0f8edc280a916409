#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace vorlen {

// The model names in the environment variable VORLEN_KIT_MODELS, separated by ';'. Each is
// returned once. As in monitor names, only the low 8 bits of each UTF-16 unit are kept, so that
// both can be compared. An empty name is left out, and reported on standard error.
std::vector<std::string> kitModelsFromEnvironment();

// The same for a text in place of the variable.
std::vector<std::string> kitModelsFromText(std::wstring_view text);

} // namespace vorlen
