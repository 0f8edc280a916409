#include "platform/text.h"

#include <windows.h>

#include <algorithm>
#include <limits>
#include <stdexcept>

namespace vorlen {

namespace {

std::string toUtf8(std::wstring_view text, DWORD flags) {
    const int length = checkedLength(text.size());
    const int size =
        WideCharToMultiByte(CP_UTF8, flags, text.data(), length, nullptr, 0, nullptr, nullptr);
    std::string bytes(static_cast<std::size_t>(size), '\0');
    const int written = WideCharToMultiByte(CP_UTF8, flags, text.data(), length, bytes.data(), size,
                                            nullptr, nullptr);
    bytes.resize(static_cast<std::size_t>(written));
    return bytes;
}

} // namespace

int checkedLength(std::size_t size) {
    if (size > static_cast<std::size_t>(std::numeric_limits<int>::max())) {
        throw std::length_error("a text of more than 2 GB cannot be converted");
    }
    return static_cast<int>(size);
}

std::string toUtf8Strict(std::wstring_view text) {
    std::string bytes = toUtf8(text, WC_ERR_INVALID_CHARS);
    // WideCharToMultiByte returns 0 for a text that is not valid UTF-16.
    if (bytes.empty() && !text.empty()) {
        throw std::range_error("bad conversion");
    }
    return bytes;
}

std::string toUtf8Lossy(std::wstring_view text) {
    return toUtf8(text, 0);
}

std::string lowBytes(std::wstring_view text) {
    std::string bytes(text.size(), '\0');
    std::ranges::transform(text, bytes.begin(),
                           [](wchar_t unit) { return static_cast<char>(unit & 0xFF); });
    return bytes;
}

} // namespace vorlen
