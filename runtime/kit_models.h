#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace vorlen {

// The model names that the environment variable VORLEN_KIT_MODELS lists, separated by ';', each
// once. They are narrowed as the names of monitors are, so that the two compare equal. An empty
// name is left out, with a line on standard error.
std::vector<std::string> kitModelsFromEnvironment();

// The same for a text.
std::vector<std::string> kitModelsFromText(std::wstring_view text);

} // namespace vorlen
