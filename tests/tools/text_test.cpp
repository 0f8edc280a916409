#include "platform/safe_text.h"
#include "platform/text.h"
#include "tools/vorlen-monitor/text.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace vorlen::tool {
namespace {

TEST(Utf8, HoldsCharactersOfEveryPlane) {
    EXPECT_EQ(toUtf8Lossy(L"a\u00e4\u4e2d\U0001F600"), "a\xc3\xa4\xe4\xb8\xad\xf0\x9f\x98\x80");
}

TEST(Utf8, OfNothingIsEmpty) {
    EXPECT_EQ(toUtf8Lossy(L""), "");
    EXPECT_EQ(toUtf16Lossy(""), L"");
}

TEST(Utf8, ShowsUnpairedSurrogatesAsReplacementCharacters) {
    EXPECT_EQ(toUtf8Lossy(L"a\xd800|"), "a\xef\xbf\xbd|");
    EXPECT_EQ(toUtf8Lossy(L"\xdc00\xd800"), "\xef\xbf\xbd\xef\xbf\xbd");
    EXPECT_EQ(toUtf8Lossy(L"cut\xd83d"), "cut\xef\xbf\xbd");
}

TEST(Utf16, ShowsStrayBytesAsReplacementCharacters) {
    EXPECT_EQ(toUtf16Lossy("a\xff|"), L"a\xfffd|");
    EXPECT_EQ(toUtf16Lossy("\xf0\x9f\x98\x80"), L"\xd83d\xde00");
}

TEST(Field, EndsAtItsTerminator) {
    VLChar16 field[VORLEN_MONITOR_TEXT_UNITS] = L"before\0behind";
    EXPECT_EQ(fieldText(field), "before");
    field[0] = L'\0';
    EXPECT_EQ(fieldText(field), "");
}

TEST(Field, IsNotReadBeyondItsEndWithoutATerminator) {
    VLChar16 field[VORLEN_MONITOR_TEXT_UNITS];
    std::fill(std::begin(field), std::end(field), L'x');
    EXPECT_EQ(fieldText(field), std::string(VORLEN_MONITOR_TEXT_UNITS, 'x'));
}

TEST(CharacterCount, CountsCodePointsNotBytes) {
    EXPECT_EQ(characterCount(""), 0U);
    EXPECT_EQ(characterCount("abc"), 3U);
    EXPECT_EQ(characterCount("\xc3\xa4\xe4\xb8\xad\xf0\x9f\x98\x80"), 3U);
}

TEST(SpelledControls, CannotDriveATerminal) {
    EXPECT_EQ(spellControls("\x1b[31m"), "<U+001B>[31m");
    EXPECT_EQ(spellControls("\r\n\t\x7f"), "<U+000D><U+000A><U+0009><U+007F>");
    EXPECT_EQ(spellControls(std::string("\0", 1)), "<U+0000>");
    EXPECT_EQ(spellControls(toUtf8Lossy(L"\x0080\x009b\x009f\x00a0")),
              "<U+0080><U+009B><U+009F>\xc2\xa0");
}

TEST(SpelledControls, CannotRearrangeTheLine) {
    EXPECT_EQ(spellControls(toUtf8Lossy(L"\x2028\x2029")), "<U+2028><U+2029>");
    EXPECT_EQ(spellControls(toUtf8Lossy(L"\x202a\x202e\x2066\x2069\x200e\x200f\x061c")),
              "<U+202A><U+202E><U+2066><U+2069><U+200E><U+200F><U+061C>");
}

TEST(SpelledControls, LeaveOtherTextAlone) {
    const std::string text =
        toUtf8Lossy(L" ~\\\\.\\DISPLAY1 \u00e4 \u4e2d \u200d \U0001F600 \ufffd");
    EXPECT_EQ(spellControls(text), text);
}

} // namespace
} // namespace vorlen::tool
