#include "benchmark/report.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <cstdio>

namespace bench {

namespace {

// Three significant digits, without an exponent.
std::string digits(double value) {
    char text[64];
    const int decimals = value < 1 ? 3 : value < 10 ? 2 : value < 100 ? 1 : 0;
    std::snprintf(text, sizeof(text), "%.*f", decimals, value);
    return text;
}

std::string limitText(double limit) {
    char text[32];
    std::snprintf(text, sizeof(text), "%g", limit);
    return text;
}

std::string result(const Row& row) {
    return digits(row.value) + ' ' + row.unit;
}

const char* verdict(const Row& row) {
    return !row.met ? "" : *row.met ? "met" : "MISSED";
}

template <typename Text>
int widest(const std::vector<Row>& rows, const char* head, Text text) {
    std::size_t width = std::string(head).size();
    for (const Row& row : rows) {
        width = std::max(width, std::string(text(row)).size());
    }
    return static_cast<int>(width);
}

} // namespace

Row fasterBy(double limit, const std::string& what, const std::string& beside, double ratio,
             const std::map<std::string, double>& measured) {
    return {what,           beside,  ">= " + limitText(limit) + " x faster", ratio, "x",
            ratio >= limit, measured};
}

Row within(const std::string& before, double limit, const std::string& behind,
           const std::string& what, const std::string& beside, double ratio,
           const std::map<std::string, double>& measured) {
    return {what,           beside,  before + "<= " + limitText(limit) + " x" + behind, ratio, "x",
            ratio <= limit, measured};
}

void printTable(const std::vector<Row>& rows) {
    const int what = widest(rows, "what", [](const Row& row) { return row.what; });
    const int beside = widest(rows, "beside", [](const Row& row) { return row.beside; });
    const int value = widest(rows, "result", result);
    const int aim = widest(rows, "aim", [](const Row& row) { return row.aim; });
    const auto line = [&](const std::string& a, const std::string& b, const std::string& c,
                          const std::string& d, const std::string& e) {
        std::printf("%-*s  %-*s  %*s  %-*s  %s\n", what, a.c_str(), beside, b.c_str(), value,
                    c.c_str(), aim, d.c_str(), e.c_str());
    };
    line("what", "beside", "result", "aim", "");
    for (const Row& row : rows) {
        line(row.what, row.beside, result(row), row.aim, verdict(row));
    }
}

std::string toJson(const std::vector<Row>& rows, const std::string& machine) {
    nlohmann::ordered_json document;
    document["machine"] = machine;
    document["rows"] = nlohmann::ordered_json::array();
    for (const Row& row : rows) {
        nlohmann::ordered_json entry = {{"what", row.what},
                                        {"beside", row.beside},
                                        {"aim", row.aim},
                                        {"value", row.value},
                                        {"unit", row.unit}};
        if (row.met) {
            entry["met"] = *row.met;
        }
        entry["measured"] = row.measured;
        document["rows"].push_back(entry);
    }
    return document.dump(2) + '\n';
}

} // namespace bench
