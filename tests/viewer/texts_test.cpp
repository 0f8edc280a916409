#include "tests/viewer/viewed_monitors.h"
#include "tools/vorlen-monitor-viewer/texts.h"
#include "vorlen/status.h"

#include <gmock/gmock.h>

namespace vorlen::viewer {
namespace {

using testing::HasSubstr;
using testing::Not;
using tool::Finding;
using tool::Severity;

const Finding aboutKit{Severity::error, "It turns\n.",       "Bad.",
                       "Do this.",      {R"(\\.\DISPLAY1)"}, "rotated-picture"};
const Finding aboutBoth{
    Severity::note, "Same.", "Little.", "Nothing.", {R"(\\.\DISPLAY1)", R"(\\.\DISPLAY2)"},
    "same-name"};
const Finding aboutDesktop{Severity::warning, "Remote.", "Slow.",
                           "Go there.",       {},        "remote-session"};
const std::vector<Finding> findings = {aboutKit, aboutDesktop, aboutBoth};

TEST(DetailsText, has_the_findings_about_the_monitor_and_the_desktop) {
    const ViewedMonitor monitor = kitMonitor();
    EXPECT_EQ(detailsText(&monitor, &findings),
              recordText(monitor) + "\nFindings about this monitor\n"
                                    "\nerror rotated-picture\nIt turns<U+000A>.\nMeaning: Bad.\n"
                                    "Advice: Do this.\n"
                                    "\nnote same-name\nSame.\nMeaning: Little.\nAdvice: Nothing.\n"
                                    "\nFindings about the desktop\n"
                                    "\nwarning remote-session\nRemote.\nMeaning: Slow.\n"
                                    "Advice: Go there.\n");
}

TEST(DetailsText, has_no_findings_about_other_monitors) {
    const ViewedMonitor monitor = otherMonitor();
    const std::string text = detailsText(&monitor, &findings);
    EXPECT_THAT(text, HasSubstr("same-name"));
    EXPECT_THAT(text, Not(HasSubstr("rotated-picture")));
}

TEST(DetailsText, says_when_there_is_no_finding) {
    const ViewedMonitor monitor = kitMonitor();
    const std::vector<Finding> none;
    EXPECT_EQ(detailsText(&monitor, &none),
              recordText(monitor) + "\nNo findings about this monitor.\n");
}

TEST(DetailsText, is_the_record_alone_before_the_first_examination) {
    const ViewedMonitor monitor = kitMonitor();
    EXPECT_EQ(detailsText(&monitor, nullptr), recordText(monitor));
}

TEST(DetailsText, says_when_there_is_no_monitor) {
    const std::vector<Finding> one = {aboutDesktop};
    EXPECT_THAT(detailsText(nullptr, &one), HasSubstr("The desktop has no monitor.\n\nFindings "));
}

TEST(ViewerStatus, has_the_code_and_the_text_for_users) {
    EXPECT_EQ(statusText(MONITOR_NOT_CONNECTED),
              "17 MONITOR_NOT_CONNECTED: The monitor is not connected.\n"
              "No Vorlen monitor is connected.\n"
              "Please connect a Vorlen monitor for 3D viewing.\n");
    EXPECT_EQ(statusText(MONITOR_OK), "16 MONITOR_OK: OK.\n");
    EXPECT_EQ(statusText(12345), "12345 UNKNOWN_STATUS: Unknown Status.\n");
}

} // namespace
} // namespace vorlen::viewer
