#pragma once

#include <string>

namespace vorlen {

// The value of an environment variable; empty when it is not set.
std::wstring environmentText(const wchar_t* variable);

} // namespace vorlen
