#pragma once

#include <cstddef>
#include <cwchar>
#include <string>

// The text of a fixed-size field of a platform structure, up to its terminating zero or, should the
// system have left that out, to the end of the field.
template <std::size_t units>
std::wstring textOf(const wchar_t (&field)[units]) {
    return {field, wcsnlen(field, units)};
}
