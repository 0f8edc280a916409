#include "platform/safe_text.h"

#include "platform/text.h"

#include <windows.h>

#include <algorithm>
#include <array>

namespace vorlen {

namespace {

struct Range {
    wchar_t first;
    wchar_t last;
};

// Beyond ASCII: the C1 control characters with DEL, the line and paragraph separators, and the
// characters with the Unicode property Bidi_Control. Each is a single UTF-16 unit.
constexpr std::array controlsBeyondAscii{
    Range{0x007F, 0x009F}, Range{0x061C, 0x061C}, Range{0x200E, 0x200F},
    Range{0x2028, 0x202E}, Range{0x2066, 0x2069},
};

bool isControlBeyondAscii(wchar_t unit) {
    return std::ranges::any_of(controlsBeyondAscii, [=](const Range& range) {
        return unit >= range.first && unit <= range.last;
    });
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

} // namespace

std::wstring toUtf16Lossy(std::string_view text) {
    const int length = checkedLength(text.size());
    const int size = MultiByteToWideChar(CP_UTF8, 0, text.data(), length, nullptr, 0);
    std::wstring units(static_cast<std::size_t>(size), L'\0');
    MultiByteToWideChar(CP_UTF8, 0, text.data(), length, units.data(), size);
    return units;
}

std::string spellControls(std::string_view text) {
    std::wstring spelled;
    for (const wchar_t unit : toUtf16Lossy(text)) {
        spelled += isControl(unit) ? L"<U+" + fourHexDigits(unit, L"0123456789ABCDEF") + L">"
                                   : std::wstring(1, unit);
    }
    return toUtf8Lossy(spelled);
}

std::string spellControlsInJson(std::string_view document) {
    std::wstring spelled;
    for (const wchar_t unit : toUtf16Lossy(document)) {
        spelled += isControlBeyondAscii(unit) ? L"\\u" + fourHexDigits(unit, L"0123456789abcdef")
                                              : std::wstring(1, unit);
    }
    return toUtf8Lossy(spelled);
}

} // namespace vorlen
