#pragma once

#include <nlohmann/json.hpp>

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>

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
// Messages and findings go through the function. Throws nlohmann::json::exception when the text is
// another one.
nlohmann::ordered_json testsOf(std::string_view file,
                               const std::function<std::string(const std::string&)>& redacted);

Totals totalsOf(const nlohmann::ordered_json& tests);

} // namespace tests
