#pragma once

#include <string>

namespace vorlen {

// The value of an environment variable; empty when it is not set. Any thread.
std::wstring environmentText(const wchar_t* variable);

} // namespace vorlen
