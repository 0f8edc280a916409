#include "tools/vorlen-monitor/doctor/report.h"
#include "vorlen/status.h"

#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

namespace vorlen::tool {
namespace {

using testing::HasSubstr;

const MonitorStatus passed{true, MONITOR_OK, std::nullopt};
const MonitorStatus notConnected{false, MONITOR_NOT_CONNECTED, std::nullopt};

Finding finding(Severity severity, const char* code, std::string seen) {
    return {severity, std::move(seen), "It means little.", "Do nothing.", {}, code};
}

TEST(DoctorText, says_when_there_is_no_finding) {
    EXPECT_EQ(doctorText(passed, {}), "16 MONITOR_OK: OK.\n\nNo findings.\n");
}

TEST(DoctorText, numbers_the_findings) {
    EXPECT_EQ(doctorText(notConnected, {finding(Severity::error, "one", "A monitor."),
                                        finding(Severity::note, "two", "A window.")}),
              "17 MONITOR_NOT_CONNECTED: The monitor is not connected.\n"
              "\n"
              "1. error one\n"
              "   Seen:    A monitor.\n"
              "   Meaning: It means little.\n"
              "   Advice:  Do nothing.\n"
              "\n"
              "2. note two\n"
              "   Seen:    A window.\n"
              "   Meaning: It means little.\n"
              "   Advice:  Do nothing.\n");
}

TEST(DoctorText, breaks_lines_between_words_after_100_characters) {
    const std::string long88(88, 'x');
    // 12 + 86 + 1 + 1 is 100 characters; the umlauts have two bytes each.
    const std::string umlauts = [] {
        std::string text;
        for (int i = 0; i < 86; ++i) {
            text += "\xc3\xbc";
        }
        return text;
    }();
    EXPECT_THAT(doctorText(passed, {finding(Severity::warning, "one", umlauts + " a b")}),
                HasSubstr("   Seen:    " + umlauts + " a\n            b\n"));
    EXPECT_THAT(
        doctorText(passed, {finding(Severity::warning, "one", long88 + "yy " + long88 + " b")}),
        HasSubstr("   Seen:    " + long88 + "yy\n            " + long88 + "\n            b\n"));
}

TEST(DoctorText, replaces_control_characters_of_names) {
    Finding hostile = finding(Severity::note, "one", "A \x1b[2J\nmonitor.");
    hostile.advice = "Name \x07.";
    const std::string text = doctorText(passed, {hostile});
    EXPECT_THAT(text, HasSubstr("   Seen:    A <U+001B>[2J<U+000A>monitor.\n"));
    EXPECT_THAT(text, HasSubstr("   Advice:  Name <U+0007>.\n"));
}

TEST(DoctorJson, holds_the_status_and_every_field_of_the_findings) {
    const auto json = doctorJson(passed, {finding(Severity::warning, "one", "A monitor.")});
    EXPECT_EQ(json["status"]["code"], 16);
    EXPECT_EQ(json["findings"].dump(),
              "[{\"code\":\"one\",\"severity\":\"warning\",\"seen\":\"A monitor.\","
              "\"meaning\":\"It means little.\",\"advice\":\"Do nothing.\"}]");
    EXPECT_EQ(doctorJson(passed, {})["findings"].dump(), "[]");
}

TEST(Prevents3d, is_true_for_an_error_only) {
    EXPECT_FALSE(prevents3d({}));
    EXPECT_FALSE(
        prevents3d({finding(Severity::warning, "one", ""), finding(Severity::note, "", "")}));
    EXPECT_TRUE(prevents3d({finding(Severity::note, "one", ""), finding(Severity::error, "", "")}));
}

} // namespace
} // namespace vorlen::tool
