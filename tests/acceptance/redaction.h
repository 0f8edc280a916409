#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace tests {

// Makes what test programs print fit to be sent to other people.
class Redaction {
public:
    // The texts that identify somebody, with the placeholders that replace them. Texts of one
    // character are left alone.
    explicit Redaction(std::vector<std::pair<std::wstring, std::wstring>> placeholders);

    // The names of this user, of this machine and its domain, of the folder, and of the user's
    // folders: their names need not be that of the user.
    static Redaction ofThisMachine(const std::wstring& folder);

    // UTF-8 with placeholders, whatever the case of the letters was. The text may be UTF-8 or in
    // the system's code page, with GoogleTest's escapes or without. A byte that is not UTF-8
    // becomes U+FFFD.
    std::string withoutNames(std::string_view text) const;

    // Also replaces what is between quotes. A test prints the texts of a desktop, such as titles,
    // in quotes.
    std::string withoutQuotes(std::string_view text) const;

private:
    std::vector<std::pair<std::wstring, std::wstring>> names;
};

// The end of a UTF-8 text, with at most this many bytes and no part of a character.
std::string endOf(const std::string& text, std::size_t most);

} // namespace tests
