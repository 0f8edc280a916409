#pragma once

#include <string>
#include <string_view>

namespace vorlen {

// UTF-8; an unpaired surrogate becomes U+FFFD.
std::string toUtf8(std::wstring_view text);

// The text with every character that could end a line, steer a terminal or turn the direction of
// the text spelled out as <U+XXXX>. All other bytes stay as they are, UTF-8 or not.
std::string spellControls(std::string_view text);

} // namespace vorlen
