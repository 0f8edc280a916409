#pragma once

#include <windows.h>

#include <string_view>

namespace vorlen {

// Writes the bytes as they are; false, with the reason in GetLastError(), when not all of them
// could be written.
bool writeAll(HANDLE file, std::string_view bytes);

} // namespace vorlen
