#pragma once

#include <string>

namespace vorlen {

// Writes one line to standard error. The text says what was wrong and what would be right.
void complain(const std::string& what);

} // namespace vorlen
