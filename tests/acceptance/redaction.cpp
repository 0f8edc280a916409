#include "tests/acceptance/redaction.h"

#include "platform/environment.h"
#include "platform/safe_text.h"
#include "platform/text.h"

#include <windows.h>

#include <algorithm>
#include <cstddef>

namespace tests {

namespace {

// GoogleTest prints a text with a second backslash before each.
std::wstring withDoubledBackslashes(const std::wstring& text) {
    std::wstring result;
    for (const wchar_t unit : text) {
        result.append(unit == L'\\' ? 2 : 1, unit);
    }
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
            names.emplace_back(text, placeholder);
            names.emplace_back(withDoubledBackslashes(text), placeholder);
        }
    }
    // A folder may contain the name of the user.
    std::ranges::stable_sort(names, std::ranges::greater(),
                             [](const auto& name) { return name.first.size(); });
}

Redaction Redaction::ofThisMachine(const std::wstring& folder) {
    return Redaction({{folder, L"<folder>"},
                      {vorlen::environmentText(L"USERNAME"), L"<user>"},
                      {vorlen::environmentText(L"COMPUTERNAME"), L"<machine>"}});
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

} // namespace tests
