#pragma once

#include <windows.h>

#include <optional>
#include <ostream>
#include <string>
#include <vector>

namespace tests {

// A text that a program or a device may have for a name, although no user would choose it.
struct HostileText {
    const char* name;
    std::wstring text;

    friend std::ostream& operator<<(std::ostream& out, const HostileText& text) {
        return out << text.name;
    }
};

inline const std::vector<HostileText> hostileTexts = {
    {"ControlCharacters", L"\x01\x1B[2J\r\n\t\x7F\x9B"},
    {"BidirectionalMarks", L"\u202Egpj.exe\u202C\u200F"},
    {"NoCharacters", L"\uFEFF\uFFFE\uFFFF"},
    {"Blank", L" \u3000\u200B"},
    {"FormatDirectives", L"%s%n{}%0$(x)\\"},
    {"HighSurrogateAlone", L"before \xD83D behind"},
    {"LowSurrogateAlone", L"before \xDE00 behind"},
    {"HighSurrogateAtTheEnd", L"before \xD83D"},
    {"PairAcrossTheEndOfTheField", std::wstring(126, L't') + L"\xD83D\xDE00 and more"},
    {"LowBytesZero", L"\u0100\u4E00\uFF00"},
    {"LongestTitle", std::wstring(32'767, L'\u4E2D')},
};

// What a record's field of 128 units shows of it.
inline std::wstring asFieldShows(const std::wstring& text) {
    return text.substr(0, 127);
}

inline std::string lowBytesOf(const std::wstring& text) {
    std::string bytes;
    for (const wchar_t unit : text) {
        bytes.push_back(static_cast<char>(unit % 256));
    }
    return bytes;
}

// As the platform converts it; nothing for a text that is not UTF-16.
inline std::optional<std::string> utf8Of(const std::wstring& text) {
    std::string bytes(3 * text.size() + 1, '\0');
    const int size = WideCharToMultiByte(CP_UTF8, WC_ERR_INVALID_CHARS, text.data(),
                                         static_cast<int>(text.size()), bytes.data(),
                                         static_cast<int>(bytes.size()), nullptr, nullptr);
    if (size == 0 && !text.empty()) {
        return std::nullopt;
    }
    bytes.resize(static_cast<std::size_t>(size));
    return bytes;
}

} // namespace tests
