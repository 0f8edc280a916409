#include "tests/acceptance/redaction.h"

#include "platform/environment.h"
#include "platform/safe_text.h"
#include "platform/text.h"

#include <windows.h>

#include <algorithm>
#include <cstddef>
#include <sstream>
#include <type_traits>
#include <utility>

namespace tests {

namespace {

std::wstring withDoubledBackslashes(const std::wstring& text) {
    std::wstring result;
    for (const wchar_t unit : text) {
        result.append(unit == L'\\' ? 2 : 1, unit);
    }
    return result;
}

// As GoogleTest prints a text in quotes: a second backslash before each, every unit beyond ASCII as
// a number, and new quotes where the next character could be read as a part of the number.
template <typename Text>
std::wstring escaped(const Text& text, const wchar_t* newQuotes) {
    constexpr std::wstring_view digits = L"0123456789ABCDEFabcdef";
    std::wostringstream result;
    result << std::hex << std::uppercase;
    bool wasNumber = false;
    for (const auto unit : text) {
        const auto value =
            static_cast<unsigned>(std::make_unsigned_t<typename Text::value_type>(unit));
        const bool isNumber = value > 0x7F;
        if (isNumber) {
            result << L"\\x" << value;
        } else {
            const auto letter = static_cast<wchar_t>(value);
            result << (wasNumber && digits.find(letter) != digits.npos ? newQuotes : L"")
                   << (letter == L'\\' ? L"\\" : L"") << letter;
        }
        wasNumber = isNumber;
    }
    return result.str();
}

std::string inCodePageOfSystem(const std::wstring& text) {
    const auto units = static_cast<int>(text.size());
    std::string result(text.size() * 4, '\0'); // no code page needs more bytes for a unit
    result.resize(static_cast<std::size_t>(
        WideCharToMultiByte(CP_ACP, 0, text.data(), units, result.data(),
                            static_cast<int>(result.size()), nullptr, nullptr)));
    return result;
}

std::wstring shortPathOf(const std::wstring& path) {
    std::wstring result(32'768, L'\0');
    result.resize(
        GetShortPathNameW(path.c_str(), result.data(), static_cast<DWORD>(result.size())));
    return result;
}

std::wstring replaced(const std::wstring& text, const std::wstring& from, const std::wstring& to) {
    std::wstring result;
    std::size_t start = 0;
    for (;;) {
        const int found = FindStringOrdinal(FIND_FROMSTART, text.data() + start,
                                            static_cast<int>(text.size() - start), from.data(),
                                            static_cast<int>(from.size()), TRUE);
        if (found < 0) {
            return result + text.substr(start);
        }
        result += text.substr(start, static_cast<std::size_t>(found)) + to;
        start += static_cast<std::size_t>(found) + from.size();
    }
}

} // namespace

Redaction::Redaction(std::vector<std::pair<std::wstring, std::wstring>> placeholders) {
    for (const auto& [text, placeholder] : placeholders) {
        if (text.size() > 1) {
            const std::string utf8 = vorlen::toUtf8Lossy(text);
            const std::string narrow = inCodePageOfSystem(text);
            for (const std::wstring& form :
                 {text, vorlen::toUtf16Lossy(narrow), withDoubledBackslashes(text),
                  escaped(text, LR"(" L")"), escaped(utf8, LR"(" ")"),
                  escaped(narrow, LR"(" ")")}) {
                names.emplace_back(form, placeholder);
            }
        }
    }
    // A folder may contain the name of the user.
    std::ranges::stable_sort(names, std::ranges::greater(),
                             [](const auto& name) { return name.first.size(); });
}

Redaction Redaction::ofThisMachine(const std::wstring& folder) {
    std::vector<std::pair<std::wstring, std::wstring>> placeholders{
        {vorlen::environmentText(L"USERNAME"), L"<user>"},
        {vorlen::environmentText(L"COMPUTERNAME"), L"<machine>"},
        {vorlen::environmentText(L"USERDOMAIN"), L"<domain>"}};
    // A short path, such as Windows uses for the folder of temporary files, holds the first letters
    // of a name.
    for (const auto& [path, placeholder] :
         {std::pair(folder, L"<folder>"),
          std::pair(vorlen::environmentText(L"USERPROFILE"), L"<profile>"),
          std::pair(vorlen::environmentText(L"TEMP"), L"<temp>"),
          std::pair(vorlen::environmentText(L"TMP"), L"<temp>")}) {
        placeholders.emplace_back(path, placeholder);
        placeholders.emplace_back(shortPathOf(path), placeholder);
    }
    return Redaction(std::move(placeholders));
}

std::string Redaction::withoutNames(std::string_view text) const {
    std::wstring result = vorlen::toUtf16Lossy(text);
    for (const auto& [name, placeholder] : names) {
        result = replaced(result, name, placeholder);
    }
    return vorlen::toUtf8Lossy(result);
}

std::string Redaction::withoutQuotes(std::string_view text) const {
    std::string result;
    bool quoted = false;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (quoted && text[i] == '\\') {
            ++i; // the character after it does not end the quotes
        } else if (text[i] == '"') {
            quoted = !quoted;
            result += quoted ? "\"..." : "\"";
        } else if (!quoted) {
            result += text[i];
        }
    }
    return withoutNames(result);
}

std::string endOf(const std::string& text, std::size_t most) {
    std::size_t start = text.size() > most ? text.size() - most : 0;
    const auto isInsideCharacter = [&](std::size_t place) {
        return place < text.size() && (static_cast<unsigned char>(text[place]) & 0xC0) == 0x80;
    };
    while (isInsideCharacter(start)) {
        ++start;
    }
    return text.substr(start);
}

} // namespace tests
