#include "tests/acceptance/test_results.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace tests {
namespace {

using Json = nlohmann::ordered_json;

std::string unchanged(const std::string& text) {
    return text;
}

// A file of GoogleTest with one suite "Suite" and these tests.
Json testsIn(const std::string& tests) {
    return testsOf(R"({"testsuites": [{"name": "Suite", "testsuite": [)" + tests + "]}]}",
                   unchanged);
}

const std::string passed =
    R"({"name": "a", "status": "RUN", "result": "COMPLETED", "time": "0.1s"})";
const std::string failed = R"({"name": "b", "status": "RUN", "result": "COMPLETED",
    "failures": [{"failure": "one", "type": ""}, {"failure": "two", "type": ""}]})";
const std::string skipped = R"({"name": "c", "status": "RUN", "result": "SKIPPED",
    "not measured": "none here", "detail windows": "0"})";
const std::string disabled = R"({"name": "d", "status": "NOTRUN", "result": "SUPPRESSED"})";

TEST(TestResults, have_a_name_and_a_result) {
    EXPECT_EQ(testsIn(passed), Json::parse(R"([{"name": "Suite.a", "result": "passed"}])"));
}

TEST(TestResults, have_the_failures_as_they_are_redacted) {
    const Json tests = testsOf(R"({"testsuites": [{"name": "S", "testsuite": [)" + failed + "]}]}",
                               [](const std::string& text) { return '<' + text + '>'; });
    EXPECT_EQ(
        tests,
        Json::parse(R"([{"name": "S.b", "result": "failed", "failures": ["<one>", "<two>"]}])"));
}

TEST(TestResults, have_what_a_fact_found) {
    EXPECT_EQ(testsIn(R"({"name": "a", "status": "RUN", "result": "COMPLETED", "answer": "yes",
                          "detail paths": "2"})"),
              Json::parse(R"([{"name": "Suite.a", "result": "passed", "answer": "yes",
                               "details": {"paths": "2"}}])"));
    EXPECT_EQ(testsIn(skipped),
              Json::parse(R"([{"name": "Suite.c", "result": "not measured", "reason": "none here",
                               "details": {"windows": "0"}}])"));
}

TEST(TestResults, have_redacted_details_but_the_answers_as_given) {
    const Json tests = testsOf(R"({"testsuites": [{"name": "S", "testsuite": [
        {"name": "a", "status": "RUN", "result": "COMPLETED", "answer": "yes", "detail b": "2"},
        {"name": "c", "status": "RUN", "result": "SKIPPED", "not measured": "none"}]}]})",
                               [](const std::string& text) { return '<' + text + '>'; });
    EXPECT_EQ(tests[0]["answer"], "yes");
    EXPECT_EQ(tests[0]["details"]["b"], "<2>");
    EXPECT_EQ(tests[1]["reason"], "none");
}

TEST(TestResults, leave_disabled_tests_out) {
    EXPECT_EQ(testsIn(disabled), Json::array());
}

TEST(TestResults, accept_bytes_that_are_not_utf8) {
    EXPECT_EQ(
        testsIn("{\"name\": \"\xFC\", \"status\": \"RUN\", \"result\": \"COMPLETED\"}")[0]["name"],
        "Suite.\xEF\xBF\xBD");
}

TEST(TestResults, refuse_another_file) {
    EXPECT_THROW(testsOf("", unchanged), Json::exception);
    EXPECT_THROW(testsOf("[]", unchanged), Json::exception);
}

TEST(TestList, has_a_filter_for_each_suite_with_tests) {
    const auto filters = filtersOf(R"({"testsuites": [
        {"name": "A", "testsuite": [{"name": "one"}, {"name": "two"}]},
        {"name": "Empty", "testsuite": []},
        {"name": "B", "testsuite": [{"name": "one"}]}]})");
    EXPECT_THAT(filters, testing::ElementsAre(testing::Pair("A", "A.one:A.two"),
                                              testing::Pair("B", "B.one")));
    EXPECT_THROW(filtersOf(""), Json::exception);
}

TEST(TestResults, are_counted) {
    const Totals totals = totalsOf(testsIn(passed + ',' + failed + ',' + skipped + ',' + passed));
    EXPECT_EQ(totals.passed, 2u);
    EXPECT_EQ(totals.failed, 1u);
    EXPECT_EQ(totals.notMeasured, 1u);
}

} // namespace
} // namespace tests
