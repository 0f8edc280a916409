#include "platform/safe_text.h"
#include "platform/text.h"

#include <gtest/gtest.h>

namespace tests {
namespace {

using vorlen::toUtf16Lossy;
using vorlen::toUtf8Lossy;

TEST(ToUtf8Lossy, converts_characters_of_every_length) {
    EXPECT_EQ(toUtf8Lossy(L"a\u00e4\u4e2d\U0001F600"), "a\xc3\xa4\xe4\xb8\xad\xf0\x9f\x98\x80");
    EXPECT_EQ(toUtf8Lossy(L""), "");
}

TEST(ToUtf8Lossy, replaces_unpaired_surrogates) {
    EXPECT_EQ(toUtf8Lossy(L"a\xd800|"), "a\xef\xbf\xbd|");
    EXPECT_EQ(toUtf8Lossy(L"\xdc00\xd800"), "\xef\xbf\xbd\xef\xbf\xbd");
    EXPECT_EQ(toUtf8Lossy(L"cut\xd83d"), "cut\xef\xbf\xbd");
}

TEST(ToUtf16Lossy, replaces_bytes_of_no_character) {
    EXPECT_EQ(toUtf16Lossy("a\xff|"), L"a\xfffd|");
    EXPECT_EQ(toUtf16Lossy("\xf0\x9f\x98\x80"), L"\xd83d\xde00");
    EXPECT_EQ(toUtf16Lossy(""), L"");
}

} // namespace
} // namespace tests
