#include "monitor/windows/capture_filter.h"
#include "tests/windows/windows_test.h"

#include <bit>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <string>
#include <vector>

namespace tests {
namespace {

class CaptureFilter : public WindowsTest {
protected:
    static const char* reasonOf(const SimulatedWindow& asked) {
        return reasonNotCapturable(WindowInfo(asked.handle));
    }

    bool isCapturable() const { return IsCapturableWindow(WindowInfo(window.handle)); }

    SimulatedWindow& window = desktop.windows.add(L"Title", L"Class");
};

TEST_F(CaptureFilter, accepts_an_ordinary_window) {
    desktop.windows.shellWindow = desktop.windows.add(L"Program Manager", L"Progman").handle;
    EXPECT_EQ(reasonOf(window), nullptr);
    EXPECT_TRUE(isCapturable());
}

// Makes one rule exclude the window.
struct Exclusion {
    const char* reason;
    void (*bringAbout)(SimulatedDesktop& desktop, SimulatedWindow& window);
    std::size_t callsMade; // of those that the filter makes in the end
};

// In the order of the rules.
const Exclusion exclusions[] = {
    {"no title", [](auto&, auto& window) { window.title.clear(); }, 0},
    {"shell window",
     [](auto& desktop, auto& window) { desktop.windows.shellWindow = window.handle; }, 1},
    {"not visible", [](auto&, auto& window) { window.visible = false; }, 2},
    {"not a root window",
     [](auto& desktop, auto& window) { window.root = desktop.windows.add(L"Parent").handle; }, 3},
    {"not a root window", [](auto&, auto& window) { window.root = nullptr; }, 3},
    {"disabled", [](auto&, auto& window) { window.style |= WS_DISABLED; }, 4},
    {"tool window", [](auto&, auto& window) { window.extendedStyle |= WS_EX_TOOLWINDOW; }, 5},
    {"not a window", [](auto& desktop, auto&) { desktop.journal.failAll("IsWindow", FALSE); }, 6},
    {"cloaked",
     [](auto&, auto& window) {
         window.className = coreWindowClass;
         window.cloaked = 1;
     },
     7},
    {"blocked",
     [](auto&, auto& window) {
         window.title = L"Task View";
         window.className = coreWindowClass;
     },
     7},
};

TEST_F(CaptureFilter, gives_the_reason_of_a_rule_and_asks_no_further) {
    const std::vector<std::string> allCalls = {
        "GetShellWindow", "IsWindowVisible", "GetAncestor",          "GetWindowLongW",
        "GetWindowLongW", "IsWindow",        "DwmGetWindowAttribute"};
    for (const Exclusion& exclusion : exclusions) {
        SCOPED_TRACE(exclusion.reason);
        SimulatedWindow& excluded = desktop.windows.add(L"Title", L"Class");
        exclusion.bringAbout(desktop, excluded);
        const WindowInfo info(excluded.handle);
        desktop.journal.clear();
        EXPECT_STREQ(reasonNotCapturable(info), exclusion.reason);
        EXPECT_EQ(desktop.windowCalls(),
                  std::vector(allCalls.begin(),
                              allCalls.begin() + static_cast<int>(exclusion.callsMade)));
        EXPECT_FALSE(IsCapturableWindow(info));
        desktop.journal.dropPlans();
    }
}

TEST_F(CaptureFilter, gives_the_reason_of_the_first_of_two_rules) {
    for (std::size_t first = 0; first < std::size(exclusions); ++first) {
        for (std::size_t second = first + 1; second < std::size(exclusions); ++second) {
            SCOPED_TRACE(exclusions[second].reason);
            SimulatedWindow& both = desktop.windows.add(L"Title", L"Class");
            // The second before the first: either may set the title.
            exclusions[second].bringAbout(desktop, both);
            exclusions[first].bringAbout(desktop, both);
            EXPECT_STREQ(reasonOf(both), exclusions[first].reason);
            desktop.journal.dropPlans();
        }
    }
}

TEST_F(CaptureFilter, takes_a_title_of_zeros_for_a_title) {
    desktop.journal.at("GetWindowTextW", 1, [&] { window.title.clear(); });
    EXPECT_EQ(reasonOf(window), nullptr);
}

TEST_F(CaptureFilter, looks_at_one_bit_of_each_style) {
    for (unsigned bit = 0; bit < 32; ++bit) {
        SCOPED_TRACE(bit);
        const auto style = std::bit_cast<LONG>(std::uint32_t{1} << bit);
        window.style = style;
        window.extendedStyle = 0;
        EXPECT_EQ(isCapturable(), style != WS_DISABLED);
        window.style = 0;
        window.extendedStyle = style;
        EXPECT_EQ(isCapturable(), style != WS_EX_TOOLWINDOW);
    }
}

TEST_F(CaptureFilter, ignores_styles_that_cannot_be_read) {
    desktop.journal.failAll("GetWindowLongW", 0);
    window.style |= WS_DISABLED;
    window.extendedStyle |= WS_EX_TOOLWINDOW;
    EXPECT_TRUE(isCapturable());
}

TEST_F(CaptureFilter, judges_the_recorded_texts_and_the_present_window) {
    const WindowInfo recorded(window.handle);
    window.title = L"Task View";
    window.className = coreWindowClass;
    window.cloaked = 1;
    EXPECT_EQ(reasonNotCapturable(recorded), nullptr);
    window.visible = false;
    EXPECT_STREQ(reasonNotCapturable(recorded), "not visible");
}

// What DwmGetWindowAttribute answers.
struct CloakingAnswer {
    HRESULT result;
    DWORD value;
    bool excludes;
};

TEST_F(CaptureFilter, excludes_frames_that_the_system_says_are_cloaked) {
    constexpr CloakingAnswer answers[] = {
        {S_OK, 0, false},         {S_OK, 1, true}, // by the application
        {S_OK, 2, true},                           // by the shell
        {S_OK, 4, true},                           // inherited from the owner
        {S_OK, 0x80000000, true}, {S_FALSE, 1, true},
        {E_NOTIMPL, 1, false},    {std::numeric_limits<HRESULT>::min(), 1, false},
    };
    for (const wchar_t* const className : {coreWindowClass, frameWindowClass}) {
        for (const CloakingAnswer& answer : answers) {
            window.className = className;
            window.cloakingResult = answer.result;
            window.cloaked = answer.value;
            EXPECT_EQ(isCapturable(), !answer.excludes)
                << "result " << answer.result << ", value " << answer.value;
        }
    }
}

TEST_F(CaptureFilter, takes_a_cloaking_state_that_is_not_written_for_none) {
    window.className = frameWindowClass;
    window.cloaked = 1;
    desktop.journal.fail("DwmGetWindowAttribute", 1, S_OK);
    EXPECT_TRUE(isCapturable());
}

// Promise (getWindowList): Only frames of packaged applications are left out because they are
// cloaked. An ordinary window on another virtual desktop is listed.
TEST_F(CaptureFilter, asks_only_about_the_cloaking_of_frames) {
    for (const wchar_t* const className :
         {L"Class", L"", L"windows.ui.core.corewindow", L"Windows.UI.Core.CoreWindow2",
          L"Windows.UI.Core.CoreWindo", L" ApplicationFrameWindow", L"ApplicationFrame"}) {
        window.className = className;
        window.cloaked = 1;
        EXPECT_TRUE(isCapturable()) << testing::PrintToString(std::wstring(className));
    }
    EXPECT_EQ(desktop.journal.count("DwmGetWindowAttribute"), 0u);
}

} // namespace
} // namespace tests
