#include "monitor/windows/capture_filter.h"
#include "tests/windows/windows_test.h"

#include <set>
#include <string>
#include <utility>

namespace tests {
namespace {

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

// A title and a class name that a window is compared with.
struct Pattern {
    std::wstring title;
    std::wstring className;
    bool matches;
};

TEST_F(BlockedWindow, matches_title_and_class_name_unit_by_unit_up_to_a_zero) {
    const WindowInfo info = record(L"Title \xD800", L"Class \u00E9");
    const Pattern patterns[] = {
        {L"Title \xD800", L"Class \u00E9", true},
        {std::wstring(L"Title \xD800\0more", 12), std::wstring(L"Class \u00E9\0more", 12), true},
        {L"Title \xD800", L"Other", false},
        {L"Other", L"Class \u00E9", false},
        {L"Class \u00E9", L"Title \xD800", false},
        {L"Title ", L"Class \u00E9", false},
        {L"Title \xD800 ", L"Class \u00E9", false},
        {L"title \xD800", L"Class \u00E9", false},
        {L"Title \xDC00", L"Class \u00E9", false},
        {L"", L"Class \u00E9", false},
        {L"Title \xD800", L"Class ", false},
        {L"Title \xD800", L"Class \u00E9 ", false},
        {L"Title \xD800", L"class \u00E9", false},
        {L"Title \xD800", L"Class e\u0301", false},
    };
    for (const auto& [title, className, matches] : patterns) {
        EXPECT_EQ(MatchTitleAndClassName(info, title, className), matches)
            << testing::PrintToString(title + L" of " + className);
    }
    EXPECT_TRUE(MatchTitleAndClassName(record(L"", L"Class"), L"", L"Class"));
}

} // namespace
} // namespace tests
