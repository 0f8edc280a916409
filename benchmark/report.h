#pragma once

#include <map>
#include <optional>
#include <string>
#include <vector>

namespace bench {

// One line of the table: a number, what it should be, and the measurements that it comes from.
struct Row {
    std::string what;
    std::string beside; // what it is compared with
    std::string aim;
    double value = 0;
    std::string unit;        // "x" for a ratio
    std::optional<bool> met; // nothing where there is no aim
    std::map<std::string, double> measured = {};
};

// A ratio that is to be no less than the limit.
Row fasterBy(double limit, const std::string& what, const std::string& beside, double ratio,
             const std::map<std::string, double>& measured);

// A ratio that is to be no more than the limit, which is told between the two words.
Row within(const std::string& before, double limit, const std::string& behind,
           const std::string& what, const std::string& beside, double ratio,
           const std::map<std::string, double>& measured);

// Writes the rows as they come, as a table for people.
void printTable(const std::vector<Row>& rows);

// The rows, and the machine that they were measured on, as a JSON document.
std::string toJson(const std::vector<Row>& rows, const std::string& machine);

} // namespace bench
