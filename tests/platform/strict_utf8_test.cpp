#include "platform/text.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>

namespace tests {
namespace {

using vorlen::toUtf8Strict;

struct Conversion {
    std::wstring text;
    std::string bytes;
};

TEST(StrictUtf8, converts_the_first_and_last_character_of_each_length) {
    const Conversion conversions[] = {
        {L"", ""},
        {std::wstring(1, L'\0'), std::string(1, '\0')},
        {L"\x7F", "\x7F"},
        {L"\x80", "\xC2\x80"},
        {L"\x7FF", "\xDF\xBF"},
        {L"\x800", "\xE0\xA0\x80"},
        {L"\xD7FF", "\xED\x9F\xBF"},
        {L"\xE000", "\xEE\x80\x80"},
        {L"\xFFFE", "\xEF\xBF\xBE"},
        {L"\xFFFF", "\xEF\xBF\xBF"},
        {L"\xD800\xDC00", "\xF0\x90\x80\x80"},
        {L"\xDBFF\xDFFF", "\xF4\x8F\xBF\xBF"},
        {std::wstring(L"a\0b", 3), std::string("a\0b", 3)},
    };
    for (const auto& [text, bytes] : conversions) {
        EXPECT_EQ(toUtf8Strict(text), bytes);
    }
}

TEST(StrictUtf8, refuses_an_unpaired_surrogate_wherever_it_stands) {
    for (const wchar_t* const text : {
             L"\xD83D",               // a high one alone
             L"\xDDA5",               // a low one alone
             L"\xD83D at the start",  //
             L"\xDDA5 at the start",  //
             L"in \xD83D the middle", //
             L"in \xDDA5 the middle", //
             L"at the end \xD83D",    //
             L"at the end \xDDA5",    //
             L"\xDDA5\xD83D",         // a pair in reverse
             L"\xD83D\xD83D\xDDA5",   // a high one before a pair
             L"\xD83D\xDDA5\xDDA5",   // a low one behind a pair
         }) {
        try {
            toUtf8Strict(text);
            ADD_FAILURE() << "not refused: " << testing::PrintToString(text);
        } catch (const std::range_error& error) {
            EXPECT_STREQ(error.what(), "bad conversion");
        }
    }
}

} // namespace
} // namespace tests
