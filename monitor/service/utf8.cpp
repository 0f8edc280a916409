#include "monitor/service/utf8.h"

#include <cstddef>
#include <cstdint>
#include <stdexcept>

namespace vorlen {

namespace {

constexpr bool isHighSurrogate(std::uint32_t unit) {
    return unit >= 0xD800 && unit <= 0xDBFF;
}

constexpr bool isLowSurrogate(std::uint32_t unit) {
    return unit >= 0xDC00 && unit <= 0xDFFF;
}

// The code point at the position, which moves behind it.
std::uint32_t nextCodePoint(std::wstring_view text, std::size_t& position) {
    const std::uint32_t first = text[position++];
    if (!isHighSurrogate(first) && !isLowSurrogate(first)) {
        return first;
    }
    if (isLowSurrogate(first) || position == text.size() || !isLowSurrogate(text[position])) {
        throw std::range_error("bad conversion");
    }
    return 0x10000 + ((first - 0xD800) << 10) + (std::uint32_t{text[position++]} - 0xDC00);
}

void append(std::string& bytes, std::uint32_t value) {
    bytes.push_back(static_cast<char>(value));
}

void appendCodePoint(std::string& bytes, std::uint32_t codePoint) {
    const auto continuation = [&](unsigned shift) {
        append(bytes, 0x80 | ((codePoint >> shift) & 0x3F));
    };
    if (codePoint < 0x80) {
        append(bytes, codePoint);
    } else if (codePoint < 0x800) {
        append(bytes, 0xC0 | (codePoint >> 6));
        continuation(0);
    } else if (codePoint < 0x10000) {
        append(bytes, 0xE0 | (codePoint >> 12));
        continuation(6);
        continuation(0);
    } else {
        append(bytes, 0xF0 | (codePoint >> 18));
        continuation(12);
        continuation(6);
        continuation(0);
    }
}

} // namespace

std::string toUtf8(std::wstring_view text) {
    std::string bytes;
    bytes.reserve(text.size());
    for (std::size_t position = 0; position < text.size();) {
        appendCodePoint(bytes, nextCodePoint(text, position));
    }
    return bytes;
}

} // namespace vorlen
