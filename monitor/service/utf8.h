#pragma once

#include <string>
#include <string_view>

namespace vorlen {

// The UTF-16 text in UTF-8. Throws std::range_error "bad conversion" on an unpaired surrogate,
// wherever it stands; the standard library's converters differ in that.
std::string toUtf8(std::wstring_view text);

} // namespace vorlen
