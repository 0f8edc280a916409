#include "platform/safe_text.h"
#include "platform/text.h"

#include <gtest/gtest.h>

#include <string>

namespace tests {
namespace {

using vorlen::spellControls;
using vorlen::toUtf8Lossy;

TEST(SpellControls, spells_out_what_could_drive_a_terminal) {
    EXPECT_EQ(spellControls("\x1b[31m"), "<U+001B>[31m");
    EXPECT_EQ(spellControls("\r\n\t\x7f"), "<U+000D><U+000A><U+0009><U+007F>");
    EXPECT_EQ(spellControls(std::string("\0", 1)), "<U+0000>");
    EXPECT_EQ(spellControls(toUtf8Lossy(L"\x0080\x009b\x009f\x00a0")),
              "<U+0080><U+009B><U+009F>\xc2\xa0");
}

TEST(SpellControls, spells_out_what_could_rearrange_the_line) {
    EXPECT_EQ(spellControls(toUtf8Lossy(L"\x2028\x2029")), "<U+2028><U+2029>");
    EXPECT_EQ(spellControls(toUtf8Lossy(L"\x202a\x202e\x2066\x2069\x200e\x200f\x061c")),
              "<U+202A><U+202E><U+2066><U+2069><U+200E><U+200F><U+061C>");
}

TEST(SpellControls, replaces_bytes_of_no_character) {
    EXPECT_EQ(spellControls("\xff|\xe2\x80\n"), "\xef\xbf\xbd|\xef\xbf\xbd<U+000A>");
    const std::string overlong = spellControls("\xc0\x8a"); // a line feed in too many bytes
    EXPECT_EQ(overlong.find_first_not_of("\xef\xbf\xbd"), std::string::npos) << overlong;
}

TEST(SpellControls, leaves_other_text_alone) {
    const std::string text =
        toUtf8Lossy(L" ~\\\\.\\DISPLAY1 \u00e4 \u4e2d \u200d \U0001F600 \ufffd");
    EXPECT_EQ(spellControls(text), text);
}

} // namespace
} // namespace tests
