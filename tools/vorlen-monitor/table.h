#pragma once

#include <string>
#include <vector>

namespace vorlen::tool {

// A table of plain text for a person to read: a line of headings, then a line per row, columns two
// spaces apart.
class Table {
public:
    enum class Align { left, right };

    struct Column {
        std::string heading;
        Align align;
    };

    explicit Table(std::vector<Column> columnsFromLeft);

    // One UTF-8 cell per column. Controls in it are spelled out; an empty cell shows as "-".
    void addRow(const std::vector<std::string>& cells);

    // Every line with a line feed at its end and no spaces before it.
    std::string text() const;

private:
    std::vector<Column> columns;
    std::vector<std::vector<std::string>> rows;

    std::vector<std::size_t> widths() const;
};

} // namespace vorlen::tool
