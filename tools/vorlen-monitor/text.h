#pragma once

#include "vorlen/monitor.h"

#include <cstddef>
#include <string>
#include <string_view>

namespace vorlen::tool {

// The two encodings of one text. What is not well formed (an unpaired surrogate, a stray byte)
// becomes U+FFFD.
std::string toUtf8(std::wstring_view text);
std::wstring toUtf16(std::string_view text);

// A text field of the library's records as UTF-8, up to its terminator.
std::string fieldText(const VLChar16 (&field)[VORLEN_MONITOR_TEXT_UNITS]);

// The number of code points of a UTF-8 text.
std::size_t characterCount(std::string_view text);

// The text with every character that could drive a terminal or rearrange the line that it stands in
// (control characters, line and paragraph separators, bidirectional controls) spelled out, such as
// <U+001B>. Names come from devices and other programs, and are not to be trusted.
std::string spellControls(std::string_view text);

// The same for a JSON document, as \u escapes: what the JSON writer leaves as it is, and what is
// therefore inside a string. The document still means the same.
std::string spellControlsInJson(std::string_view document);

} // namespace vorlen::tool
