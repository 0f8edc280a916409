#include "tools/vorlen-monitor/table.h"

#include "platform/safe_text.h"
#include "tools/vorlen-monitor/text.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

namespace vorlen::tool {

Table::Table(std::vector<Column> columnsFromLeft) : columns(std::move(columnsFromLeft)) {
    std::vector<std::string> headings;
    for (const Column& column : columns) {
        headings.push_back(column.heading);
    }
    addRow(headings);
}

void Table::addRow(const std::vector<std::string>& cells) {
    if (cells.size() != columns.size()) {
        throw std::logic_error("a row of a table does not have one cell for every column");
    }
    std::vector<std::string> row;
    row.reserve(cells.size());
    for (const std::string& cell : cells) {
        row.push_back(cell.empty() ? "-" : spellControls(cell));
    }
    rows.push_back(std::move(row));
}

std::vector<std::size_t> Table::widths() const {
    std::vector<std::size_t> widths(columns.size(), 0);
    for (const auto& row : rows) {
        for (std::size_t i = 0; i < row.size(); ++i) {
            widths[i] = std::max(widths[i], characterCount(row[i]));
        }
    }
    return widths;
}

std::string Table::text() const {
    const std::vector<std::size_t> width = widths();
    std::string text;
    for (const auto& row : rows) {
        std::string line;
        for (std::size_t i = 0; i < row.size(); ++i) {
            const std::string padding(width[i] - characterCount(row[i]), ' ');
            line += i == 0 ? "" : "  ";
            line += columns[i].align == Align::left ? row[i] + padding : padding + row[i];
        }
        line.erase(line.find_last_not_of(' ') + 1);
        text += line + "\n";
    }
    return text;
}

} // namespace vorlen::tool
