#include "tests/status/known_codes.h"
#include "tests/status/second_unit.h"
#include "vorlen/status.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <bit>
#include <limits>
#include <set>
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

// Of a table, the values of its codes.
std::set<std::int32_t> keysOf(Table& table) {
    std::set<std::int32_t> keys;
    for (const auto& entry : table) {
        keys.insert(entry.first);
    }
    return keys;
}

std::set<std::int32_t> knownValues() {
    std::set<std::int32_t> values;
    for (const KnownCode& code : knownCodes()) {
        values.insert(code.value);
    }
    return values;
}

const std::string& textOf(Table& table, std::int32_t value) {
    return table.find(static_cast<VLStatus>(value))->second;
}

class StatusCode : public testing::TestWithParam<KnownCode> {};

TEST_P(StatusCode, has_its_value) {
    const std::int32_t value = GetParam().enumerator;
    EXPECT_EQ(value, GetParam().value);
}

TEST_P(StatusCode, has_its_short_text) {
    const auto found = StatusShortMessages.find(GetParam().enumerator);
    ASSERT_NE(found, StatusShortMessages.end());
    EXPECT_EQ(found->second, GetParam().shortText);
}

TEST_P(StatusCode, has_its_text_for_users) {
    const auto found = StatusMessages.find(GetParam().enumerator);
    ASSERT_NE(found, StatusMessages.end());
    EXPECT_EQ(found->second, GetParam().longText);
}

TEST_P(StatusCode, has_its_name) {
    EXPECT_STREQ(statusName(GetParam().value), GetParam().name.c_str());
}

INSTANTIATE_TEST_SUITE_P(All, StatusCode, testing::ValuesIn(knownCodes()),
                         [](const auto& test) { return test.param.name; });

TEST(StatusTables, hold_the_32_codes_and_nothing_else) {
    EXPECT_EQ(knownCodes().size(), 32u);
    EXPECT_EQ(StatusMessages.size(), 32u);
    EXPECT_EQ(StatusShortMessages.size(), 32u);
    EXPECT_EQ(keysOf(StatusMessages), knownValues());
    EXPECT_EQ(keysOf(StatusShortMessages), knownValues());
}

TEST(StatusTables, take_minus_1_as_a_code_like_any_other) {
    EXPECT_EQ(textOf(StatusShortMessages, -1), "Unknown Status.");
    EXPECT_EQ(textOf(StatusMessages, -1), "");
    EXPECT_EQ(std::bit_cast<std::uint32_t>(vorlen::UNKNOWN_STATUS), 0xFFFFFFFFu);
}

TEST(StatusTables, say_that_all_is_good) {
    EXPECT_EQ(textOf(StatusShortMessages, 0), "All Good.");
    EXPECT_EQ(textOf(StatusMessages, 0), "");
}

TEST(StatusTables, call_the_first_code_of_every_group_ok) {
    for (const std::int32_t value : {16, 32, 48, 80, 96, 112}) {
        EXPECT_EQ(textOf(StatusShortMessages, value), "OK.") << value;
    }
}

TEST(StatusTables, have_a_short_text_for_every_code) {
    EXPECT_TRUE(std::none_of(StatusShortMessages.begin(), StatusShortMessages.end(),
                             [](const auto& entry) { return entry.second.empty(); }));
}

TEST(StatusTables, give_users_one_advice_for_every_fault_that_they_can_only_report) {
    for (const std::int32_t value : {49, 50, 81, 82, 83, 113}) {
        EXPECT_EQ(textOf(StatusMessages, value),
                  "An unknown error occurred.\nPlease contact Vorlen.\n"
                  "Click on the letter to send a mail with a status code.")
            << value;
    }
}

TEST(StatusTables, keep_the_double_negative_and_the_missing_space) {
    EXPECT_EQ(textOf(StatusShortMessages, 99), "Vorlenlib version is not invalid.");
    EXPECT_THAT(textOf(StatusMessages, 33), testing::HasSubstr("other programsand relaunch"));
}

TEST(StatusTables, break_texts_for_users_into_two_lines_with_three_exceptions) {
    for (const auto& [code, text] : StatusMessages) {
        const std::set<std::int32_t> oneLine = {48, 112};
        const std::set<std::int32_t> threeLines = {49, 50, 81, 82, 83, 113};
        if (!text.empty()) {
            const int lineFeeds = oneLine.contains(code) ? 0 : threeLines.contains(code) ? 2 : 1;
            EXPECT_EQ(std::count(text.begin(), text.end(), '\n'), lineFeeds) << code;
            EXPECT_NE(text.back(), '\n') << code;
        }
    }
}

TEST(StatusTables, do_not_know_other_values_and_are_not_extended_by_asking) {
    constexpr std::int32_t lowest = std::numeric_limits<std::int32_t>::min();
    constexpr std::int32_t highest = std::numeric_limits<std::int32_t>::max();
    for (const std::int32_t value :
         {lowest, -2, 1, 15, 23, 31, 36, 47, 53, 64, 79, 84, 95, 102, 111, 116, 0x7F, highest}) {
        EXPECT_FALSE(StatusMessages.contains(static_cast<VLStatus>(value))) << value;
        EXPECT_EQ(StatusMessages.find(static_cast<VLStatus>(value)), StatusMessages.end()) << value;
        EXPECT_EQ(StatusShortMessages.find(static_cast<VLStatus>(value)), StatusShortMessages.end())
            << value;
        EXPECT_EQ(statusName(value), nullptr) << value;
    }
    EXPECT_EQ(StatusMessages.size(), 32u);
    EXPECT_EQ(StatusShortMessages.size(), 32u);
}

TEST(StatusTables, are_of_each_unit_itself_with_the_same_content) {
    const StatusTables others = tablesOfSecondUnit();
    EXPECT_NE(&others.longTexts, &StatusMessages);
    EXPECT_NE(&others.shortTexts, &StatusShortMessages);
    EXPECT_EQ(others.longTexts, StatusMessages);
    EXPECT_EQ(others.shortTexts, StatusShortMessages);
}

TEST(StatusCodes, pass_through_plain_32_bit_integers_unchanged) {
    for (const KnownCode& code : knownCodes()) {
        const std::int32_t plain = code.enumerator;
        EXPECT_EQ(static_cast<VLStatus>(plain), code.enumerator);
    }
}

} // namespace
} // namespace tests
