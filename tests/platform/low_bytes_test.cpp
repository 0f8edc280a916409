#include "platform/text.h"

#include <gtest/gtest.h>

namespace tests {
namespace {

using vorlen::narrow;

TEST(Narrowing, keeps_ascii_as_it_is) {
    EXPECT_EQ(lowBytes(LR"(\\.\DISPLAY1)"), R"(\\.\DISPLAY1)");
    EXPECT_EQ(lowBytes(L""), "");
}

TEST(Narrowing, takes_the_low_8_bits_of_every_other_unit) {
    EXPECT_EQ(lowBytes(L"\u0080\u00E9\u00FF\u3042\uFFFE"), "\x80\xE9\xFF\x42\xFE");
}

TEST(Narrowing, takes_both_halves_of_a_character_beyond_16_bits) {
    EXPECT_EQ(lowBytes(L"\U0001F5A5"), "\x3D\xA5");
}

TEST(Narrowing, keeps_the_length_also_where_the_low_byte_is_zero) {
    EXPECT_EQ(lowBytes(L"a\u0100b"), std::string("a\0b", 3));
}

} // namespace
} // namespace tests
