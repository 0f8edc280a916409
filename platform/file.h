#pragma once

#include <windows.h>

#include <string_view>

namespace vorlen {

// Writes the bytes as they are; false, with the reason in GetLastError(), when not all of them
// could be written. A file that takes nothing and reports success counts as ERROR_WRITE_FAULT. The
// runtime and vorlen-monitor share this file.
bool writeAll(HANDLE file, std::string_view bytes);

} // namespace vorlen
