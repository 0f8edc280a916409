#include "tests/status/known_codes.h"
#include "tests/status/second_unit.h"
#include "vorlen/status.h"

#include <gtest/gtest.h>

#include <limits>
#include <type_traits>

namespace tests {

void PrintTo(const KnownCode& code, std::ostream* out) {
    *out << code.name << " = " << code.value;
}

namespace {

using vorlen::StatusMessages;
using vorlen::statusName;
using vorlen::StatusShortMessages;
using vorlen::VLStatus;

using Table = const std::unordered_map<VLStatus, std::string>;

// A look-up cannot add an entry: the tables have no function that would.
static_assert(std::is_same_v<decltype(StatusMessages), Table>);
static_assert(std::is_same_v<decltype(StatusShortMessages), Table>);

static_assert(std::is_same_v<std::underlying_type_t<VLStatus>, std::int32_t>);
static_assert(std::is_convertible_v<VLStatus, std::int32_t>);

class StatusCode : public testing::TestWithParam<KnownCode> {};

TEST_P(StatusCode, has_its_value_name_and_texts) {
    const KnownCode& code = GetParam();
    EXPECT_EQ(static_cast<std::int32_t>(code.enumerator), code.value);
    EXPECT_STREQ(statusName(code.value), code.name.c_str());
    EXPECT_EQ(StatusShortMessages.at(code.enumerator), code.shortText);
    EXPECT_EQ(StatusMessages.at(code.enumerator), code.longText);
    EXPECT_STREQ(vorlen::statusShortMessage(code.value), code.shortText.c_str());
    EXPECT_STREQ(vorlen::statusMessage(code.value), code.longText.c_str());
}

INSTANTIATE_TEST_SUITE_P(All, StatusCode, testing::ValuesIn(knownCodes()),
                         [](const auto& test) { return test.param.name; });

TEST(StatusTables, have_the_32_codes_and_no_others) {
    EXPECT_EQ(knownCodes().size(), 32u);
    EXPECT_EQ(StatusMessages.size(), 32u);
    EXPECT_EQ(StatusShortMessages.size(), 32u);
    constexpr std::int32_t lowest = std::numeric_limits<std::int32_t>::min();
    constexpr std::int32_t highest = std::numeric_limits<std::int32_t>::max();
    for (const std::int32_t value : {lowest, -2, 1, 15, 23, 31, 36, 116, highest}) {
        EXPECT_EQ(statusName(value), nullptr) << value;
        EXPECT_EQ(vorlen::statusShortMessage(value), nullptr) << value;
        EXPECT_EQ(vorlen::statusMessage(value), nullptr) << value;
    }
}

TEST(StatusTables, belong_to_each_unit_and_have_the_same_content) {
    const StatusTables others = tablesOfSecondUnit();
    EXPECT_NE(&others.longTexts, &StatusMessages);
    EXPECT_NE(&others.shortTexts, &StatusShortMessages);
    EXPECT_EQ(others.longTexts, StatusMessages);
    EXPECT_EQ(others.shortTexts, StatusShortMessages);
}

} // namespace
} // namespace tests
