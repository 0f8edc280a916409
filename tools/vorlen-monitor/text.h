#pragma once

#include "vorlen/monitor.h"

#include <cstddef>
#include <string>
#include <string_view>

namespace vorlen::tool {

// A text field of the library's records as UTF-8, up to its terminator.
std::string fieldText(const VLChar16 (&field)[VORLEN_MONITOR_TEXT_UNITS]);

// The number of code points of a UTF-8 text.
std::size_t characterCount(std::string_view text);

} // namespace vorlen::tool
