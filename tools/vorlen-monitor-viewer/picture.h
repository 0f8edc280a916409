#pragma once

#include <windows.h>

#include <string>

namespace vorlen::viewer {

// Draws the contents of a shown window into a PNG file, whose name is UTF-8. Throws a Failure when
// the file cannot be written.
void writePicture(HWND window, const std::string& fileName);

} // namespace vorlen::viewer
