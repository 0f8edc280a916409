#pragma once

#include <windows.h>

#include <string_view>

namespace vorlen {

// Writes the bytes unchanged. Returns false, with the reason in GetLastError(), when not all bytes
// could be written: ERROR_WRITE_FAULT when the system reports success but has written no byte. The
// handle stays the caller's. Any thread.
bool writeAll(HANDLE file, std::string_view bytes);

} // namespace vorlen
