#pragma once

#include <string>
#include <string_view>

// Names of monitors, windows and files come from devices and other programs: text that is printed
// must not drive the terminal that shows it. Any thread.

namespace vorlen {

// The UTF-8 text with every character that could drive a terminal or rearrange the line that it
// stands in (control characters, line and paragraph separators, bidirectional controls) spelled
// out, such as <U+001B>. A byte that belongs to no character becomes U+FFFD.
std::string spellControls(std::string_view text);

// The same for a JSON document, as \u escapes, which mean the same inside its strings.
std::string spellControlsInJson(std::string_view document);

} // namespace vorlen
