#include "platform/text.h"
#include "tools/vorlen-monitor/text.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <algorithm>
#include <iterator>
#include <string>

namespace vorlen::tool {
namespace {

TEST(FieldText, ends_at_the_terminator) {
    VLChar16 field[VORLEN_MONITOR_TEXT_UNITS] = L"before\0behind";
    EXPECT_EQ(fieldText(field), "before");
    field[0] = L'\0';
    EXPECT_EQ(fieldText(field), "");
}

TEST(FieldText, is_the_whole_field_without_a_terminator) {
    VLChar16 field[VORLEN_MONITOR_TEXT_UNITS];
    std::fill(std::begin(field), std::end(field), L'x');
    EXPECT_EQ(fieldText(field), std::string(VORLEN_MONITOR_TEXT_UNITS, 'x'));
}

TEST(CharacterCount, counts_code_points) {
    EXPECT_EQ(characterCount(""), 0U);
    EXPECT_EQ(characterCount("abc"), 3U);
    EXPECT_EQ(characterCount("\xc3\xa4\xe4\xb8\xad\xf0\x9f\x98\x80"), 3U);
}

TEST(JsonText, is_indented_and_ends_with_a_line_feed) {
    EXPECT_EQ(jsonText({{"key", "value"}}), "{\n  \"key\": \"value\"\n}\n");
    EXPECT_EQ(jsonText(nlohmann::ordered_json::array()), "[]\n");
}

TEST(JsonText, keeps_characters_beyond_ascii) {
    EXPECT_EQ(jsonText(toUtf8Lossy(L"\u4e2d\U0001F600")), "\"\xe4\xb8\xad\xf0\x9f\x98\x80\"\n");
}

TEST(JsonText, escapes_what_could_drive_a_terminal) {
    const std::string hostile = toUtf8Lossy(L"\x1b[31m \x007f \x009b"
                                            L"31m \x202e \x2028 \\ \"");
    const std::string text = jsonText(hostile);
    EXPECT_EQ(text, "\"\\u001b[31m \\u007f \\u009b31m \\u202e \\u2028 \\\\ \\\"\"\n");
    EXPECT_EQ(nlohmann::ordered_json::parse(text), hostile);
}

} // namespace
} // namespace vorlen::tool
