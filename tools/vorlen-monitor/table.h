#pragma once

#include <string>
#include <vector>

namespace vorlen::tool {

// A table as plain text: a line of headings, then a line for each row. Columns are separated by
// two spaces.
class Table {
public:
    enum class Align { left, right };

    struct Column {
        std::string heading;
        Align align;
    };

    explicit Table(std::vector<Column> columnsFromLeft);

    // One UTF-8 cell for each column. Control characters are replaced as by spellControls(); an
    // empty cell is shown as "-".
    void addRow(const std::vector<std::string>& cells);

    // Every line ends with a line feed and without spaces before it.
    std::string text() const;

private:
    std::vector<Column> columns;
    std::vector<std::vector<std::string>> rows;

    std::vector<std::size_t> widths() const;
};

} // namespace vorlen::tool
