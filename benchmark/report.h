#pragma once

#include <map>
#include <optional>
#include <string>
#include <vector>

namespace bench {

// One row of the table: a result, its aim, and the measurements that it was computed from.
struct Row {
    std::string what;
    std::string beside; // what the result is compared with
    std::string aim;
    double value = 0;
    std::string unit;        // "x" for a ratio
    std::optional<bool> met; // nothing without an aim
    std::map<std::string, double> measured = {};
};

// A row with a ratio that should be at least the limit.
Row fasterBy(double limit, const std::string& what, const std::string& beside, double ratio,
             const std::map<std::string, double>& measured);

// A row with a ratio that should be at most the limit. The texts before and behind enclose the
// limit in the aim.
Row within(const std::string& before, double limit, const std::string& behind,
           const std::string& what, const std::string& beside, double ratio,
           const std::map<std::string, double>& measured);

// Prints the rows as a table.
void printTable(const std::vector<Row>& rows);

// The rows and the description of the machine as a JSON document.
std::string toJson(const std::vector<Row>& rows, const std::string& machine);

} // namespace bench
