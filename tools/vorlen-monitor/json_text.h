#pragma once

#include <nlohmann/json_fwd.hpp>

#include <string>

namespace vorlen::tool {

// A JSON document as the command prints it: UTF-8, indented by two spaces, a line feed at its end.
std::string jsonText(const nlohmann::ordered_json& document);

} // namespace vorlen::tool
