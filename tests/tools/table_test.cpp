#include "platform/text.h"
#include "tools/vorlen-monitor/table.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace vorlen::tool {
namespace {

Table nameAndNumber() {
    return Table({{"NAME", Table::Align::left}, {"NUMBER", Table::Align::right}});
}

TEST(Table, aligns_every_column_to_its_widest_cell) {
    Table table = nameAndNumber();
    table.addRow({"a long name", "1"});
    table.addRow({"b", "-1234567"});
    EXPECT_EQ(table.text(), "NAME           NUMBER\n"
                            "a long name         1\n"
                            "b            -1234567\n");
}

TEST(Table, aligns_by_characters_and_not_by_bytes) {
    Table table = nameAndNumber();
    table.addRow({toUtf8Lossy(L"\u00e4\u00f6\u00fc\U0001F600"), "1"});
    EXPECT_EQ(table.text(),
              "NAME  NUMBER\n" + toUtf8Lossy(L"\u00e4\u00f6\u00fc\U0001F600") + "       1\n");
}

TEST(Table, leaves_no_spaces_at_the_end_of_a_line) {
    Table table({{"FIRST", Table::Align::left}, {"LAST", Table::Align::left}});
    table.addRow({"1", "much longer"});
    table.addRow({"2", "short"});
    EXPECT_EQ(table.text(), "FIRST  LAST\n"
                            "1      much longer\n"
                            "2      short\n");
}

TEST(Table, shows_an_empty_cell_as_a_dash) {
    Table table = nameAndNumber();
    table.addRow({"", "1"});
    EXPECT_EQ(table.text(), "NAME  NUMBER\n"
                            "-          1\n");
}

TEST(Table, spells_out_a_line_feed_in_a_cell) {
    Table table = nameAndNumber();
    table.addRow({"two\nlines", "1"});
    EXPECT_EQ(table.text(), "NAME              NUMBER\n"
                            "two<U+000A>lines       1\n");
}

TEST(Table, refuses_a_row_of_another_length) {
    Table table = nameAndNumber();
    EXPECT_THROW(table.addRow({"alone"}), std::logic_error);
}

} // namespace
} // namespace vorlen::tool
