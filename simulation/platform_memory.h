#pragma once

#include <algorithm>
#include <cstddef>
#include <string>

namespace simulation {

// Fills a text field of a platform structure as the system does. A text that is as long as the
// field or longer leaves no room for a terminating zero.
template <std::size_t units>
void fillField(wchar_t (&field)[units], const std::wstring& text) {
    const auto end = std::copy_n(text.begin(), std::min(text.size(), units), field);
    std::fill(end, field + units, L'\0');
}

// Whether every byte of the memory is zero.
inline bool isZero(const void* memory, std::size_t size) {
    const auto* const bytes = static_cast<const std::byte*>(memory);
    return std::all_of(bytes, bytes + size, [](std::byte byte) { return byte == std::byte{0}; });
}

} // namespace simulation
