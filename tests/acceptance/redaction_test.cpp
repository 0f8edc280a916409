#include "tests/acceptance/redaction.h"

#include <gtest/gtest.h>

namespace tests {
namespace {

const Redaction redaction({{L"C:\\Users\\Jos\u00E9\\kit", L"<folder>"},
                           {L"Jos\u00E9", L"<user>"},
                           {L"PC", L"<machine>"}});

TEST(Redaction, replaces_names_in_any_case) {
    EXPECT_EQ(redaction.withoutNames("JOS\xC3\x89 at pc"), "<user> at <machine>");
}

TEST(Redaction, replaces_a_folder_before_the_names_in_it) {
    EXPECT_EQ(redaction.withoutNames("in c:\\users\\jos\xC3\xA9\\KIT\\tests"),
              "in <folder>\\tests");
}

TEST(Redaction, knows_paths_with_doubled_backslashes) {
    EXPECT_EQ(redaction.withoutNames("C:\\\\Users\\\\Jos\xC3\xA9\\\\kit"), "<folder>");
}

TEST(Redaction, replaces_bytes_that_are_not_utf8) {
    EXPECT_EQ(redaction.withoutNames("a\xFF"
                                     "b"),
              "a\xEF\xBF\xBD"
              "b");
}

TEST(Redaction, leaves_texts_of_one_character_alone) {
    EXPECT_EQ(Redaction({{L"a", L"<user>"}, {L"", L"<machine>"}}).withoutNames("a tale"), "a tale");
}

TEST(Redaction, replaces_what_is_between_quotes) {
    EXPECT_EQ(redaction.withoutQuotes(R"(Actual: { L"a \"private\" title", L"" } (of PC))"),
              R"(Actual: { L"...", L"..." } (of <machine>))");
}

TEST(Redaction, replaces_what_follows_an_open_quote) {
    EXPECT_EQ(redaction.withoutQuotes(R"(cut "title)"), R"(cut "...)");
}

} // namespace
} // namespace tests
