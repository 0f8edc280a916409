#pragma once

#include <windows.h>

#include <cstdio>
#include <set>
#include <string>
#include <utility>
#include <vector>

// The words in which facts answer.

namespace tests {

inline std::string hexadecimal(HRESULT result) {
    char text[16]{};
    static_cast<void>(
        std::snprintf(text, sizeof(text), "0x%08lX", static_cast<unsigned long>(result)));
    return text;
}

// Separated by commas; the replacement when there are none.
template <typename Texts>
std::string joined(const Texts& texts, const std::string& replacement) {
    std::string result;
    for (const std::string& text : texts) {
        result += (result.empty() ? "" : ", ") + text;
    }
    return result.empty() ? replacement : result;
}

// The answers of several askings: one text when all are equal, else each with its name.
inline std::string united(const std::vector<std::pair<std::string, std::string>>& answers) {
    std::set<std::string> different;
    std::vector<std::string> named;
    for (const auto& [name, text] : answers) {
        different.insert(text);
        named.push_back(name + ": " + text);
    }
    return different.size() == 1 ? *different.begin() : joined(named, "");
}

} // namespace tests
