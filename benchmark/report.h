#pragma once

#include <map>
#include <optional>
#include <string>
#include <vector>

namespace bench {

// One row of the table: a result, its aim, and the measurements that it was computed from.
struct Row {
    std::string what;
    std::string beside = {}; // what the result is compared with; empty for a count
    double value = 0;
    std::string unit = {};
    std::optional<double> atLeast = {}; // the aim: at most one of both
    std::optional<double> atMost = {};
    std::map<std::string, double> measured = {};
};

// The units of ratios of times: the library's and that of what is beside it.
constexpr const char* timesFaster = "x faster";
constexpr const char* timesTheTime = "x the time";

// The rows as a JSON document.
std::string toJson(const std::vector<Row>& rows);

} // namespace bench
