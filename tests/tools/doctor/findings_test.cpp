#include "tests/tools/doctor/doctor_test.h"
#include "tools/vorlen-monitor/doctor/findings.h"
#include "tools/vorlen-monitor/doctor/words.h"
#include "vorlen/status.h"

#include <set>

namespace vorlen::tool {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::StartsWith;

class Doctor : public DoctorTest {};

TEST_F(Doctor, finds_nothing_on_a_good_desktop) {
    addWindow(L"Editor");
    EXPECT_THAT(findings(), IsEmpty());
}

TEST_F(Doctor, shows_the_most_severe_findings_first) {
    addWindow(L"Palette", "tool window");
    examination.reading.process.remoteSession = true;
    kitPath().rotation = 3;
    EXPECT_THAT(findings(), ElementsAre("error rotated-picture", "warning remote-session",
                                        "note window-not-capturable"));
}

TEST_F(Doctor, finds_nothing_wrong_in_an_empty_reading_but_the_kit_monitor) {
    examination = {};
    recogniseNone();
    EXPECT_THAT(findings(), ElementsAre("error no-kit-monitor"));
}

TEST_F(Doctor, finds_an_error_for_every_status_that_is_not_ok) {
    const auto kitMonitor = examination.status.monitor;
    for (const VLStatus code :
         {MONITOR_NOT_CONNECTED, MONITOR_RESOLUTION_INCORRECT, MONITOR_REFRESH_RATE_INCORRECT}) {
        examination.status = {false, code, std::nullopt};
        EXPECT_THAT(findings(), Contains(StartsWith("error "))) << code;
        examination.status.monitor = kitMonitor;
        EXPECT_THAT(findings(), Contains(StartsWith("error "))) << code;
    }
}

TEST(FindingRules, have_codes_of_small_letters_digits_and_hyphens) {
    std::set<std::string> codes;
    for (const FindingRule& rule : findingRules()) {
        EXPECT_EQ(std::string(rule.code).find_first_not_of("abcdefghijklmnopqrstuvwxyz0123456789-"),
                  std::string::npos);
        EXPECT_TRUE(codes.insert(rule.code).second) << rule.code << " occurs twice";
    }
}

TEST(KitModels, are_separated_by_semicolons) {
    EXPECT_THAT(kitModelsIn(L""), IsEmpty());
    EXPECT_THAT(kitModelsIn(L"KIT 27"), ElementsAre(L"KIT 27"));
    EXPECT_THAT(kitModelsIn(L"ONE;;TWO;"), ElementsAre(L"ONE", L"TWO"));
}

TEST(Words, cut_a_long_quotation) {
    EXPECT_EQ(inQuotes(L"Gl\u00e4ser"), "\"Gl\xc3\xa4ser\"");
    EXPECT_EQ(inQuotes(std::wstring(80, L'x')), "\"" + std::string(80, 'x') + "\"");
    EXPECT_EQ(inQuotes(std::wstring(81, L'x')), "\"" + std::string(80, 'x') + "...\"");
}

TEST(Words, show_hundredths_of_a_hertz_that_are_not_zero) {
    EXPECT_EQ(rateText(6000), "60 Hz");
    EXPECT_EQ(rateText(5994), "59.94 Hz");
    EXPECT_EQ(rateText(6005), "60.05 Hz");
}

TEST(Words, round_a_refresh_rate_to_hundredths) {
    EXPECT_EQ(hundredthsOfHertz({60000, 1001}), 5994);
    EXPECT_EQ(hundredthsOfHertz({533000000, 8888000}), 5997);
    EXPECT_EQ(hundredthsOfHertz({60, 0}), std::nullopt);
    EXPECT_EQ(hundredthsOfHertz({0, 1}), std::nullopt);
}

TEST(Words, name_a_status_of_the_functions_for_displays) {
    EXPECT_EQ(displayStatusText(122), "status 122 (ERROR_INSUFFICIENT_BUFFER)");
    EXPECT_EQ(displayStatusText(1234), "status 1234");
}

TEST(Words, show_a_result_in_hexadecimal) {
    EXPECT_EQ(resultText(static_cast<std::int32_t>(0x80041003)),
              "0x80041003 (WBEM_E_ACCESS_DENIED)");
    EXPECT_EQ(resultText(1), "0x1");
}

TEST(Words, name_connections_and_colour_formats) {
    EXPECT_EQ(connectionText(5), "HDMI");
    EXPECT_EQ(connectionText(0x80000000), "an internal connection");
    EXPECT_EQ(connectionText(99), "connection type 99");
    EXPECT_EQ(encodingText(3), "YCbCr 4:2:0");
    EXPECT_EQ(encodingText(7), "encoding 7");
}

} // namespace
} // namespace vorlen::tool
