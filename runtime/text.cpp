#include "runtime/text.h"

#include <windows.h>

#include <algorithm>
#include <array>
#include <bit>
#include <cstddef>
#include <limits>
#include <stdexcept>

namespace vorlen {

namespace {

struct Range {
    unsigned first;
    unsigned last;
};

// The two blocks of control characters, the separators of lines and paragraphs, and the characters
// with the property Bidi_Control.
constexpr std::array controls{
    Range{0x0000, 0x001F}, Range{0x007F, 0x009F}, Range{0x061C, 0x061C},
    Range{0x200E, 0x200F}, Range{0x2028, 0x202E}, Range{0x2066, 0x2069},
};

bool isControl(unsigned codePoint) {
    return std::any_of(controls.begin(), controls.end(), [=](const Range& range) {
        return codePoint >= range.first && codePoint <= range.last;
    });
}

struct Character {
    std::size_t bytes;
    unsigned codePoint;
};

// A byte that belongs to no character stands for one that is no control.
constexpr Character loneByte{1, 0xFFFD};

Character firstCharacter(std::string_view text) {
    const auto lead = static_cast<unsigned char>(text.front());
    if (lead < 0x80) {
        return {1, lead};
    }
    const auto bytes = static_cast<std::size_t>(std::countl_one(lead));
    if (bytes < 2 || bytes > 4 || bytes > text.size()) {
        return loneByte;
    }
    // Needlessly long forms are decoded, too: a lenient reader takes them for the character.
    unsigned codePoint = lead & (0x7FU >> bytes);
    for (const char byte : text.substr(1, bytes - 1)) {
        const auto continuation = static_cast<unsigned char>(byte);
        if ((continuation & 0xC0) != 0x80) {
            return loneByte;
        }
        codePoint = (codePoint << 6) | (continuation & 0x3FU);
    }
    return {bytes, codePoint};
}

std::string spelled(unsigned codePoint) {
    constexpr std::string_view digits = "0123456789ABCDEF";
    std::string text = "<U+";
    for (unsigned shift = 16; shift > 0;) {
        shift -= 4;
        text += digits[(codePoint >> shift) & 0xF];
    }
    return text + ">";
}

} // namespace

std::string toUtf8(std::wstring_view text) {
    if (text.size() > static_cast<std::size_t>(std::numeric_limits<int>::max())) {
        throw std::length_error("a text of more than 4 GB cannot be converted");
    }
    const int length = static_cast<int>(text.size());
    const int size =
        WideCharToMultiByte(CP_UTF8, 0, text.data(), length, nullptr, 0, nullptr, nullptr);
    std::string bytes(static_cast<std::size_t>(size), '\0');
    WideCharToMultiByte(CP_UTF8, 0, text.data(), length, bytes.data(), size, nullptr, nullptr);
    return bytes;
}

std::string spellControls(std::string_view text) {
    std::string safe;
    safe.reserve(text.size());
    while (!text.empty()) {
        const Character character = firstCharacter(text);
        if (isControl(character.codePoint)) {
            safe += spelled(character.codePoint);
        } else {
            safe += text.substr(0, character.bytes);
        }
        text.remove_prefix(character.bytes);
    }
    return safe;
}

} // namespace vorlen
