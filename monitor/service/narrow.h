#pragma once

#include <string>
#include <string_view>

namespace vorlen {

// Intended: the runtime takes the low 8 bits of each UTF-16 unit, without any encoding. ASCII
// arrives unchanged, any other character as the low byte of its unit.
std::string narrow(std::wstring_view text);

} // namespace vorlen
