#include "platform/environment.h"
#include "platform/text.h"
#include "tests/acceptance/redaction.h"

#include <windows.h>

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

TEST(Redaction, knows_names_as_googletest_escapes_them) {
    EXPECT_EQ(redaction.withoutNames(R"(L"C:\\Users\\Jos\xE9\\kit\\a")"), R"(L"<folder>\\a")");
    EXPECT_EQ(redaction.withoutNames(R"("Jos\xC3\xA9")"), R"("<user>")");
    const Redaction split({std::pair(L"J\u00F6e", L"<user>")});
    EXPECT_EQ(split.withoutNames(R"(L"J\xF6" L"e")"), R"(L"<user>")");
    EXPECT_EQ(split.withoutNames(R"("J\xC3\xB6" "e")"), R"("<user>")");
}

TEST(Redaction, knows_names_in_the_code_page_of_the_system) {
    BOOL changed = FALSE;
    char narrow[8]{};
    WideCharToMultiByte(CP_ACP, 0, L"Jos\u00E9", -1, narrow, sizeof(narrow), nullptr, &changed);
    if (changed != FALSE) {
        GTEST_SKIP() << "the code page does not have the letter";
    }
    EXPECT_EQ(redaction.withoutNames(narrow), "<user>");
}

TEST(Redaction, knows_the_places_of_this_user) {
    const Redaction here = Redaction::ofThisMachine(L"C:\\kit");
    for (const wchar_t* variable : {L"USERPROFILE", L"TEMP"}) {
        const std::string place = vorlen::toUtf8Lossy(vorlen::environmentText(variable));
        ASSERT_NE(place, "");
        EXPECT_EQ(here.withoutNames(place + "\\file").substr(0, 1), "<") << place;
    }
}

TEST(Redaction, keeps_the_end_of_a_long_text) {
    EXPECT_EQ(endOf("abc", 3), "abc");
    EXPECT_EQ(endOf("abcd", 3), "bcd");
    EXPECT_EQ(endOf("a\xC3\xA9"
                    "bc",
                    3),
              "bc");
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
