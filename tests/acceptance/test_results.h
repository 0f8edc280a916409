#pragma once

#include <nlohmann/json.hpp>

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace tests {

struct Totals {
    std::size_t passed = 0;
    std::size_t failed = 0;
    std::size_t notMeasured = 0;

    Totals& operator+=(const Totals& other);
};

// The tests in a file that GoogleTest wrote with --gtest_output=json, in the order of the file:
// "name", "result" ("passed", "failed" or "not measured"), "failures" with the messages, if any,
// and what a fact found (tests/acceptance/facts/finding.h): "answer" or "reason", and "details".
// Messages and details go through the function. Throws nlohmann::json::exception when the text is
// another one.
nlohmann::ordered_json testsOf(std::string_view file,
                               const std::function<std::string(const std::string&)>& redacted);

// The filter (--gtest_filter) for each suite in the list that GoogleTest writes with
// --gtest_list_tests --gtest_output=json, with the name of the suite. Throws as testsOf.
std::vector<std::pair<std::string, std::string>> filtersOf(std::string_view file);

Totals totalsOf(const nlohmann::ordered_json& tests);

} // namespace tests
