#include "tests/acceptance/test_results.h"

#include "platform/safe_text.h"
#include "platform/text.h"

namespace tests {

namespace {

using Json = nlohmann::ordered_json;

constexpr std::string_view detailMark = "detail ";

std::string resultOf(const Json& test) {
    return test.contains("failures")          ? "failed"
           : test.at("result") == "SKIPPED"   ? "not measured"
           : test.at("result") == "COMPLETED" ? "passed"
                                              : "failed";
}

// Answers and reasons are words of the facts: the ledger compares them, and a user may be called
// "no".
void addFinding(const Json& test, const std::function<std::string(const std::string&)>& redacted,
                Json& result) {
    if (test.contains("answer")) {
        result["answer"] = test["answer"];
    }
    if (test.contains("not measured")) {
        result["reason"] = test["not measured"];
    }
    for (const auto& [key, value] : test.items()) {
        if (key.starts_with(detailMark)) {
            result["details"][key.substr(detailMark.size())] = redacted(value);
        }
    }
}

} // namespace

Totals& Totals::operator+=(const Totals& other) {
    passed += other.passed;
    failed += other.failed;
    notMeasured += other.notMeasured;
    return *this;
}

Json testsOf(std::string_view file,
             const std::function<std::string(const std::string&)>& redacted) {
    // A path in a message may have bytes that are not UTF-8, which the parser refuses.
    const Json results = Json::parse(vorlen::toUtf8Lossy(vorlen::toUtf16Lossy(file)));
    Json tests = Json::array();
    for (const Json& suite : results.at("testsuites")) {
        for (const Json& test : suite.at("testsuite")) {
            if (test.at("status") != "RUN") {
                continue; // disabled
            }
            Json& result = tests.emplace_back();
            result["name"] =
                suite.at("name").get<std::string>() + '.' + test.at("name").get<std::string>();
            result["result"] = resultOf(test);
            for (const Json& failure : test.value("failures", Json::array())) {
                result["failures"].push_back(redacted(failure.at("failure").get<std::string>()));
            }
            addFinding(test, redacted, result);
        }
    }
    return tests;
}

std::vector<std::pair<std::string, std::string>> filtersOf(std::string_view file) {
    const Json list = Json::parse(file);
    std::vector<std::pair<std::string, std::string>> filters;
    for (const Json& suite : list.at("testsuites")) {
        const std::string name = suite.at("name");
        std::string filter;
        for (const Json& test : suite.at("testsuite")) {
            filter += (filter.empty() ? "" : ":") + name + '.' + test.at("name").get<std::string>();
        }
        if (!filter.empty()) { // all of its tests are left out
            filters.emplace_back(name, filter);
        }
    }
    return filters;
}

Totals totalsOf(const Json& tests) {
    Totals totals;
    for (const Json& test : tests) {
        ++(test.at("result") == "passed"   ? totals.passed
           : test.at("result") == "failed" ? totals.failed
                                           : totals.notMeasured);
    }
    return totals;
}

} // namespace tests
