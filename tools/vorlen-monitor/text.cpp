#include "tools/vorlen-monitor/text.h"

#include <windows.h>

#include <algorithm>
#include <array>
#include <limits>
#include <stdexcept>

namespace vorlen::tool {

namespace {

struct Range {
    wchar_t first;
    wchar_t last;
};

// Beyond ASCII: the second block of control characters, the separators, and the characters with
// the property Bidi_Control. All of them are single UTF-16 units.
constexpr std::array controlsBeyondAscii{
    Range{0x007F, 0x009F}, Range{0x061C, 0x061C}, Range{0x200E, 0x200F},
    Range{0x2028, 0x202E}, Range{0x2066, 0x2069},
};

bool isControlBeyondAscii(wchar_t unit) {
    return std::any_of(
        controlsBeyondAscii.begin(), controlsBeyondAscii.end(),
        [=](const Range& range) { return unit >= range.first && unit <= range.last; });
}

bool isControl(wchar_t unit) {
    return unit < 0x20 || isControlBeyondAscii(unit);
}

std::wstring fourHexDigits(wchar_t unit, std::wstring_view digits) {
    std::wstring text;
    for (int shift = 12; shift >= 0; shift -= 4) {
        text += digits[static_cast<std::size_t>(unit >> shift) & 0xF];
    }
    return text;
}

int checkedLength(std::size_t size) {
    if (size > static_cast<std::size_t>(std::numeric_limits<int>::max())) {
        throw std::length_error("a text of more than 2 GB cannot be converted");
    }
    return static_cast<int>(size);
}

} // namespace

std::string toUtf8(std::wstring_view text) {
    const int length = checkedLength(text.size());
    const int size =
        WideCharToMultiByte(CP_UTF8, 0, text.data(), length, nullptr, 0, nullptr, nullptr);
    std::string bytes(static_cast<std::size_t>(size), '\0');
    WideCharToMultiByte(CP_UTF8, 0, text.data(), length, bytes.data(), size, nullptr, nullptr);
    return bytes;
}

std::wstring toUtf16(std::string_view text) {
    const int length = checkedLength(text.size());
    const int size = MultiByteToWideChar(CP_UTF8, 0, text.data(), length, nullptr, 0);
    std::wstring units(static_cast<std::size_t>(size), L'\0');
    MultiByteToWideChar(CP_UTF8, 0, text.data(), length, units.data(), size);
    return units;
}

std::string fieldText(const VLChar16 (&field)[VORLEN_MONITOR_TEXT_UNITS]) {
    const auto* const end = std::find(std::begin(field), std::end(field), L'\0');
    return toUtf8({std::begin(field), static_cast<std::size_t>(end - std::begin(field))});
}

std::size_t characterCount(std::string_view text) {
    // Every code point has exactly one byte that is not a continuation byte.
    return static_cast<std::size_t>(std::count_if(text.begin(), text.end(), [](char byte) {
        return (static_cast<unsigned char>(byte) & 0xC0) != 0x80;
    }));
}

std::string spellControls(std::string_view text) {
    std::wstring spelled;
    for (const wchar_t unit : toUtf16(text)) {
        spelled += isControl(unit) ? L"<U+" + fourHexDigits(unit, L"0123456789ABCDEF") + L">"
                                   : std::wstring(1, unit);
    }
    return toUtf8(spelled);
}

std::string spellControlsInJson(std::string_view document) {
    std::wstring spelled;
    for (const wchar_t unit : toUtf16(document)) {
        spelled += isControlBeyondAscii(unit) ? L"\\u" + fourHexDigits(unit, L"0123456789abcdef")
                                              : std::wstring(1, unit);
    }
    return toUtf8(spelled);
}

} // namespace vorlen::tool
