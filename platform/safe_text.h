#pragma once

#include <string>
#include <string_view>

// Names of monitors, windows and files come from devices and other programs. When such text is
// printed, it must not control the terminal that shows it. Any thread.

namespace vorlen {

// UTF-16; a byte that is not part of a valid character becomes U+FFFD.
std::wstring toUtf16Lossy(std::string_view text);

// Replaces every character of a UTF-8 text that could control a terminal or reorder the line
// (control characters, line and paragraph separators, bidirectional controls) by its code point,
// such as <U+001B>. A byte that is not part of a valid character becomes U+FFFD.
std::string spellControls(std::string_view text);

// Replaces the same characters of a JSON document by \u escapes, which mean the same in JSON
// strings.
std::string spellControlsInJson(std::string_view document);

} // namespace vorlen
