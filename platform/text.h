#pragma once

#include <cstddef>
#include <string>
#include <string_view>

// Conversions of text. Any thread. Functions that return a string throw std::bad_alloc when memory
// is exhausted; the UTF conversions throw std::length_error for a text of more than 2^31 - 1
// units.

namespace vorlen {

// The number of units as the system's conversions take it.
int checkedLength(std::size_t size);

// UTF-8. Throws std::range_error "bad conversion" when the text has an unpaired surrogate.
std::string toUtf8Strict(std::wstring_view text);

// UTF-8; an unpaired surrogate becomes U+FFFD.
std::string toUtf8Lossy(std::wstring_view text);

// Intended: names for the runtime's core keep the low 8 bits of each UTF-16 unit and have no
// encoding. ASCII characters stay unchanged.
std::string lowBytes(std::wstring_view text);

// The text up to its first zero, or all of it.
constexpr std::wstring_view untilZero(std::wstring_view text) {
    return text.substr(0, text.find(L'\0'));
}

// The text of a fixed-size field of a platform structure, up to its terminating zero or, when the
// system wrote none, to the end of the field.
template <std::size_t units>
std::wstring textOf(const wchar_t (&field)[units]) {
    return std::wstring(untilZero({field, units}));
}

} // namespace vorlen
