#include "platform/text.h"
#include "tools/vorlen-monitor/text.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

namespace vorlen::tool {
namespace {

TEST(JsonText, IsIndentedAndEndsWithALineFeed) {
    EXPECT_EQ(jsonText({{"key", "value"}}), "{\n  \"key\": \"value\"\n}\n");
    EXPECT_EQ(jsonText(nlohmann::ordered_json::array()), "[]\n");
}

TEST(JsonText, HoldsUtf8) {
    EXPECT_EQ(jsonText(toUtf8Lossy(L"\u4e2d\U0001F600")), "\"\xe4\xb8\xad\xf0\x9f\x98\x80\"\n");
}

TEST(JsonText, CannotDriveATerminalAndStillMeansTheSame) {
    const std::string hostile = toUtf8Lossy(L"\x1b[31m \x007f \x009b"
                                            L"31m \x202e \x2028 \\ \"");
    const std::string text = jsonText(hostile);
    EXPECT_EQ(text, "\"\\u001b[31m \\u007f \\u009b31m \\u202e \\u2028 \\\\ \\\"\"\n");
    EXPECT_EQ(nlohmann::ordered_json::parse(text), hostile);
}

} // namespace
} // namespace vorlen::tool
