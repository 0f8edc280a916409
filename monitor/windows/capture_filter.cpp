#include "monitor/windows/capture_filter.h"

#include <windows.h>

#include <dwmapi.h>

#include <algorithm>
#include <cwchar>
#include <iterator>

namespace {

bool equal(const std::wstring& text, const wchar_t* other) {
    return std::wcscmp(text.c_str(), other) == 0;
}

bool matches(const WindowInfo& info, const wchar_t* title, const wchar_t* className) {
    return equal(info.title, title) && equal(info.className, className);
}

bool hasStyle(const WindowInfo& info, int index, LONG style) {
    return (GetWindowLongW(info.hwnd, index) & style) != 0;
}

// Intended: other windows may be cloaked. Only the frames of packaged applications stay visible
// while the system hides them.
bool canBeCloaked(const WindowInfo& info) {
    return equal(info.className, L"Windows.UI.Core.CoreWindow") ||
           equal(info.className, L"ApplicationFrameWindow");
}

bool isCloaked(const WindowInfo& info) {
    DWORD cloaked = 0;
    const HRESULT result =
        DwmGetWindowAttribute(info.hwnd, DWMWA_CLOAKED, &cloaked, sizeof(cloaked));
    return SUCCEEDED(result) && cloaked != 0;
}

struct CaptureTest {
    const char* name;
    bool (*keepsOut)(const WindowInfo& info);
};

// In the order in which they are made; the first that keeps the window out decides.
constexpr CaptureTest captureTests[] = {
    // Nothing that a user could pick by its name.
    {"no title",
     [](const WindowInfo& info) {
         return info.title.empty();
     }},
    // The desktop itself.
    {"shell window",
     [](const WindowInfo& info) {
         return info.hwnd == GetShellWindow();
     }},
    // Windows that show nothing now.
    {"not visible",
     [](const WindowInfo& info) {
         return IsWindowVisible(info.hwnd) == FALSE;
     }},
    // Parts of other windows.
    {"not a root window",
     [](const WindowInfo& info) {
         return GetAncestor(info.hwnd, GA_ROOT) != info.hwnd;
     }},
    // Windows behind a modal dialog of theirs.
    {"disabled",
     [](const WindowInfo& info) {
         return hasStyle(info, GWL_STYLE, WS_DISABLED);
     }},
    // Floating palettes.
    {"tool window",
     [](const WindowInfo& info) {
         return hasStyle(info, GWL_EXSTYLE, WS_EX_TOOLWINDOW);
     }},
    // Windows that died meanwhile; the style tests before cannot tell, since they read 0 then.
    {"not a window",
     [](const WindowInfo& info) {
         return IsWindow(info.hwnd) == FALSE;
     }},
    // Applications that the system has suspended or put on another virtual desktop.
    {"cloaked",
     [](const WindowInfo& info) {
         return canBeCloaked(info) && isCloaked(info);
     }},
    // Windows of the system that look like those of applications.
    {"blocked",
     [](const WindowInfo& info) {
         return IsKnownBlockedWindow(info);
     }},
};

} // namespace

const char* findRefusal(const WindowInfo& info) {
    const auto* const test =
        std::find_if(std::begin(captureTests), std::end(captureTests),
                     [&](const CaptureTest& candidate) { return candidate.keepsOut(info); });
    return test != std::end(captureTests) ? test->name : nullptr;
}

bool IsCapturableWindow(const WindowInfo& info) {
    return findRefusal(info) == nullptr;
}

bool IsKnownBlockedWindow(const WindowInfo& info) {
    struct BlockedWindow {
        const wchar_t* title;
        const wchar_t* className;
    };
    static constexpr BlockedWindow blockList[] = {
        {L"Task View", L"Windows.UI.Core.CoreWindow"},
        {L"DesktopWindowXamlSource", L"Windows.UI.Core.CoreWindow"},
        {L"PopupHost", L"Xaml_WindowedPopupClass"},
    };
    return std::any_of(std::begin(blockList), std::end(blockList), [&](const BlockedWindow& entry) {
        return matches(info, entry.title, entry.className);
    });
}

bool MatchTitleAndClassName(const WindowInfo& info, const std::wstring& title,
                            const std::wstring& className) {
    return matches(info, title.c_str(), className.c_str());
}
