#include "monitor/windows/capture_filter.h"

#include "platform/text.h"

#include <windows.h>

#include <dwmapi.h>

#include <algorithm>

namespace {

constexpr bool equal(std::wstring_view text, std::wstring_view other) {
    return vorlen::untilZero(text) == vorlen::untilZero(other);
}

bool hasNoTitle(const WindowInfo& info) {
    return info.title.empty();
}

bool isShellWindow(const WindowInfo& info) {
    return info.hwnd == GetShellWindow();
}

bool isNotVisible(const WindowInfo& info) {
    return IsWindowVisible(info.hwnd) == FALSE;
}

bool isNotRoot(const WindowInfo& info) {
    return GetAncestor(info.hwnd, GA_ROOT) != info.hwnd;
}

bool isDisabled(const WindowInfo& info) {
    return (GetWindowLongW(info.hwnd, GWL_STYLE) & WS_DISABLED) != 0;
}

bool isToolWindow(const WindowInfo& info) {
    return (GetWindowLongW(info.hwnd, GWL_EXSTYLE) & WS_EX_TOOLWINDOW) != 0;
}

bool isNotWindow(const WindowInfo& info) {
    return IsWindow(info.hwnd) == FALSE;
}

// Intended: windows of other classes are not checked. Only the frames of packaged applications
// stay visible while they are cloaked. When the call fails, as on a system without cloaking, the
// window counts as not cloaked.
bool isCloaked(const WindowInfo& info) {
    if (!equal(info.className, L"Windows.UI.Core.CoreWindow") &&
        !equal(info.className, L"ApplicationFrameWindow")) {
        return false;
    }
    DWORD cloaked = 0;
    const HRESULT result =
        DwmGetWindowAttribute(info.hwnd, DWMWA_CLOAKED, &cloaked, sizeof(cloaked));
    return SUCCEEDED(result) && cloaked != 0;
}

struct BlockedWindow {
    std::wstring_view title;
    std::wstring_view className;
};

constexpr BlockedWindow blockList[] = {
    {L"Task View", L"Windows.UI.Core.CoreWindow"},
    {L"DesktopWindowXamlSource", L"Windows.UI.Core.CoreWindow"},
    {L"PopupHost", L"Xaml_WindowedPopupClass"},
};

struct Rule {
    const char* reason;
    bool (*excludes)(const WindowInfo& info);
};

// In this order: the first rule that excludes the window gives the reason.
constexpr Rule rules[] = {
    {"no title", hasNoTitle},          // a user could not choose it by name
    {"shell window", isShellWindow},   // the desktop itself
    {"not visible", isNotVisible},     // has nothing to show
    {"not a root window", isNotRoot},  // a part of another window
    {"disabled", isDisabled},          // waits for its modal dialog
    {"tool window", isToolWindow},     // a floating palette
    {"not a window", isNotWindow},     // destroyed after it was read: its styles read as 0
    {"cloaked", isCloaked},            // suspended, or on another virtual desktop
    {"blocked", IsKnownBlockedWindow}, // a window of the system that passes all other rules
};

} // namespace

const char* reasonNotCapturable(const WindowInfo& info) {
    const auto* const rule = std::ranges::find_if(
        rules, [&](const Rule& candidate) { return candidate.excludes(info); });
    return rule != std::end(rules) ? rule->reason : nullptr;
}

bool IsCapturableWindow(const WindowInfo& info) {
    return reasonNotCapturable(info) == nullptr;
}

bool IsKnownBlockedWindow(const WindowInfo& info) {
    return std::ranges::any_of(blockList, [&](const BlockedWindow& entry) {
        return MatchTitleAndClassName(info, entry.title, entry.className);
    });
}

bool MatchTitleAndClassName(const WindowInfo& info, std::wstring_view title,
                            std::wstring_view className) {
    return equal(info.title, title) && equal(info.className, className);
}
