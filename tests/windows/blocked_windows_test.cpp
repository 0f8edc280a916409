#include "monitor/windows/capture_filter.h"
#include "tests/windows/windows_test.h"

#include <gmock/gmock.h>

#include <set>
#include <utility>

namespace tests {
namespace {

using testing::IsEmpty;

const wchar_t* const popupClass = L"Xaml_WindowedPopupClass";

class BlockedWindow : public WindowsTest {
protected:
    WindowInfo record(const std::wstring& title, const std::wstring& className) {
        return WindowInfo(desktop.windows.add(title, className).handle);
    }
};

TEST_F(BlockedWindow, is_one_of_three_pairs_of_title_and_class_name) {
    const std::set<std::pair<std::wstring, std::wstring>> blocked = {
        {L"Task View", coreWindowClass},
        {L"DesktopWindowXamlSource", coreWindowClass},
        {L"PopupHost", popupClass}};
    for (const wchar_t* const title :
         {L"Task View", L"DesktopWindowXamlSource", L"PopupHost", L"Other"}) {
        for (const wchar_t* const className :
             {coreWindowClass, popupClass, frameWindowClass, L"Other"}) {
            SCOPED_TRACE(testing::PrintToString(std::wstring(title) + L" of " + className));
            const WindowInfo info = record(title, className);
            const bool expected = blocked.contains({title, className});
            EXPECT_EQ(IsKnownBlockedWindow(info), expected);
            EXPECT_EQ(IsCapturableWindow(info), !expected);
        }
    }
}

TEST_F(BlockedWindow, matches_exactly) {
    for (const wchar_t* const title : {L"task view", L"Task View ", L" Task View", L"Task Vie",
                                       L"Task Views", L"TaskView", L"TASK VIEW", L""}) {
        EXPECT_FALSE(IsKnownBlockedWindow(record(title, coreWindowClass)))
            << testing::PrintToString(std::wstring(title));
    }
    for (const wchar_t* const className :
         {L"windows.ui.core.corewindow", L"Windows.UI.Core.CoreWindo", L"",
          L"Windows.UI.Core.CoreWindows", L"Windows.UI.Core.CoreWindow "}) {
        EXPECT_FALSE(IsKnownBlockedWindow(record(L"Task View", className)))
            << testing::PrintToString(std::wstring(className));
    }
}

TEST_F(BlockedWindow, is_found_without_asking_the_system) {
    const WindowInfo info = record(L"Task View", coreWindowClass);
    desktop.journal.clear();
    EXPECT_TRUE(IsKnownBlockedWindow(info));
    EXPECT_THAT(desktop.journal.calls(), IsEmpty());
}

using TitleAndClassName = BlockedWindow;

TEST_F(TitleAndClassName, match_only_together) {
    const WindowInfo info = record(L"Title", L"Class");
    EXPECT_TRUE(MatchTitleAndClassName(info, L"Title", L"Class"));
    EXPECT_FALSE(MatchTitleAndClassName(info, L"Title", L"Other"));
    EXPECT_FALSE(MatchTitleAndClassName(info, L"Other", L"Class"));
    EXPECT_FALSE(MatchTitleAndClassName(info, L"Class", L"Title"));
}

TEST_F(TitleAndClassName, match_neither_by_prefix_nor_without_regard_to_case) {
    const WindowInfo info = record(L"Title", L"Class");
    EXPECT_FALSE(MatchTitleAndClassName(info, L"Titl", L"Class"));
    EXPECT_FALSE(MatchTitleAndClassName(info, L"Title2", L"Class"));
    EXPECT_FALSE(MatchTitleAndClassName(info, L"title", L"Class"));
    EXPECT_FALSE(MatchTitleAndClassName(info, L"Title", L"Clas"));
    EXPECT_FALSE(MatchTitleAndClassName(info, L"Title", L"Class2"));
    EXPECT_FALSE(MatchTitleAndClassName(info, L"Title", L"CLASS"));
}

TEST_F(TitleAndClassName, are_compared_up_to_the_first_zero_on_both_sides) {
    const WindowInfo info = record(L"Title", L"Class");
    EXPECT_TRUE(MatchTitleAndClassName(info, std::wstring(L"Title\0more", 10),
                                       std::wstring(L"Class\0more", 10)));
}

TEST_F(TitleAndClassName, match_an_untitled_window_by_an_empty_title) {
    EXPECT_TRUE(MatchTitleAndClassName(record(L"", L"Class"), L"", L"Class"));
    EXPECT_FALSE(MatchTitleAndClassName(record(L"Title", L"Class"), L"", L"Class"));
}

TEST_F(TitleAndClassName, are_compared_unit_by_unit) {
    const WindowInfo info = record(L"\xD800", L"\u00E9");
    EXPECT_TRUE(MatchTitleAndClassName(info, L"\xD800", L"\u00E9"));
    EXPECT_FALSE(MatchTitleAndClassName(info, L"\xDC00", L"\u00E9"));
    EXPECT_FALSE(MatchTitleAndClassName(info, L"\xD800", L"e\u0301"));
}

} // namespace
} // namespace tests
