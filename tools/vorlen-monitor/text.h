#pragma once

#include "vorlen/monitor.h"

#include <nlohmann/json_fwd.hpp>

#include <cstddef>
#include <string>
#include <string_view>

namespace vorlen::tool {

// A text field of the library's records as UTF-8, up to its terminating zero.
std::string fieldText(const VLChar16 (&field)[VORLEN_MONITOR_TEXT_UNITS]);

// The number of code points of a UTF-8 text.
std::size_t characterCount(std::string_view text);

// A JSON document as the command prints it: UTF-8, indented by two spaces, with a line feed at its
// end.
std::string jsonText(const nlohmann::ordered_json& document);

} // namespace vorlen::tool
