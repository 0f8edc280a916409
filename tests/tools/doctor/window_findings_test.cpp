#include "tests/tools/doctor/doctor_test.h"

namespace vorlen::tool {
namespace {

using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;

class WindowNotCapturable : public DoctorTest {};

TEST_F(WindowNotCapturable, is_a_note_for_each_reason) {
    addWindow(L"Palette", "tool window");
    addWindow(L"Waiting", "disabled");
    addWindow(L"Editor");
    EXPECT_THAT(findings(),
                ElementsAre("note window-not-capturable", "note window-not-capturable"));
}

TEST_F(WindowNotCapturable, shows_the_reason_and_the_titles) {
    addWindow(L"One", "disabled");
    EXPECT_EQ(theFinding("window-not-capturable").seen,
              "1 visible window is not capturable, with the reason \"disabled\": \"One\".");
    addWindow(L"Two", "disabled");
    EXPECT_EQ(theFinding("window-not-capturable").seen,
              "2 visible windows are not capturable, with the reason \"disabled\": \"One\", "
              "\"Two\".");
}

TEST_F(WindowNotCapturable, shows_five_titles_at_most) {
    for (const wchar_t* const title : {L"1", L"2", L"3", L"4", L"5"}) {
        addWindow(title, "cloaked");
    }
    EXPECT_THAT(theFinding("window-not-capturable").seen, EndsWith("\"4\", \"5\"."));
    addWindow(L"6", "cloaked");
    addWindow(L"7", "cloaked");
    EXPECT_THAT(theFinding("window-not-capturable").seen, EndsWith("\"4\", \"5\", 2 more."));
}

TEST_F(WindowNotCapturable, explains_each_reason) {
    addWindow(L"Waiting", "disabled");
    EXPECT_EQ(theFinding("window-not-capturable").advice, "Close the dialog.");
    examination.reading.windows.back().reason = "tool window";
    EXPECT_THAT(theFinding("window-not-capturable").meaning, HasSubstr("palette"));
    examination.reading.windows.back().reason = "cloaked";
    EXPECT_THAT(theFinding("window-not-capturable").meaning, HasSubstr("virtual desktop"));
    examination.reading.windows.back().reason = "not a window";
    EXPECT_THAT(theFinding("window-not-capturable").advice, HasSubstr("windows --all"));
}

TEST_F(WindowNotCapturable, is_not_found_for_windows_that_a_user_does_not_expect) {
    addWindow(L"Hidden", "not visible").visible = false;
    addWindow(L"", "no title");
    addWindow(L"Child", "not a root window").root = 1;
    addWindow(L"Program Manager", "shell window");
    addWindow(L"Task View", "blocked");
    EXPECT_THAT(findings(), IsEmpty());
}

class WindowNotListed : public DoctorTest {};

TEST_F(WindowNotListed, is_capturable_and_missing_in_the_list) {
    addWindow(L"Editor");
    addWindow(L"New");
    examination.listedWindows.pop_back();
    EXPECT_THAT(findings(), ElementsAre("note window-not-listed"));
    EXPECT_EQ(theFinding("window-not-listed").seen,
              "1 visible window is capturable and missing in the library's list: \"New\".");
    EXPECT_THAT(theFinding("window-not-listed").meaning, HasSubstr("closed"));
}

} // namespace
} // namespace vorlen::tool
