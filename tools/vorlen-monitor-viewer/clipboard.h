#pragma once

#include <windows.h>

#include <string>

namespace vorlen::viewer {

// Replaces the contents of the clipboard by a text of UTF-8 whose lines end with line feeds. Throws
// a Failure when the clipboard cannot be used.
void copyToClipboard(HWND owner, const std::string& text);

// A text of UTF-8 with line feeds as the system's controls and the clipboard take it.
std::wstring withLineBreaks(const std::string& text);

} // namespace vorlen::viewer
