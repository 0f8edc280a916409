#include "platform/text.h"

#include <gtest/gtest.h>

namespace tests {
namespace {

using vorlen::lowBytes;

TEST(LowBytes, keep_ascii_as_it_is) {
    EXPECT_EQ(lowBytes(LR"(\\.\DISPLAY1)"), R"(\\.\DISPLAY1)");
    EXPECT_EQ(lowBytes(L""), "");
}

TEST(LowBytes, are_the_low_8_bits_of_every_other_unit) {
    EXPECT_EQ(lowBytes(L"\u0080\u00E9\u00FF\u3042\uFFFE"), "\x80\xE9\xFF\x42\xFE");
    EXPECT_EQ(lowBytes(L"\U0001F5A5"), "\x3D\xA5") << "both halves of a surrogate pair";
    EXPECT_EQ(lowBytes(L"a\u0100b"), std::string("a\0b", 3)) << "a low byte that is zero";
}

} // namespace
} // namespace tests
