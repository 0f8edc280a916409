#include "benchmark/host_window_list.h"

#include <dwmapi.h>

namespace bench {

namespace {

bool isCloaked(HWND window) {
    DWORD cloaked = 0;
    return SUCCEEDED(DwmGetWindowAttribute(window, DWMWA_CLOAKED, &cloaked, sizeof(cloaked))) &&
           cloaked != 0;
}

bool isBlocked(const HostWindow& window) {
    return (window.className == L"Windows.UI.Core.CoreWindow" &&
            (window.title == L"Task View" || window.title == L"DesktopWindowXamlSource")) ||
           (window.className == L"Xaml_WindowedPopupClass" && window.title == L"PopupHost");
}

BOOL CALLBACK append(HWND window, LPARAM parameter) {
    HostWindow read;
    if (isCapturable(window, read)) {
        reinterpret_cast<std::vector<HostWindow>*>(parameter)->push_back(std::move(read));
    }
    return TRUE;
}

} // namespace

bool isCapturable(HWND window, HostWindow& read) {
    wchar_t title[256];
    wchar_t className[256];
    const int length = GetWindowTextW(window, title, 256);
    if (length < 1 || window == GetShellWindow() || IsWindowVisible(window) == FALSE ||
        GetAncestor(window, GA_ROOT) != window ||
        (GetWindowLongW(window, GWL_STYLE) & WS_DISABLED) != 0 ||
        (GetWindowLongW(window, GWL_EXSTYLE) & WS_EX_TOOLWINDOW) != 0 ||
        IsWindow(window) == FALSE) {
        return false;
    }
    read.window = window;
    read.title.assign(title, static_cast<std::size_t>(length));
    read.className.assign(className,
                          static_cast<std::size_t>(GetClassNameW(window, className, 256)));
    const bool canBeCloaked = read.className == L"Windows.UI.Core.CoreWindow" ||
                              read.className == L"ApplicationFrameWindow";
    return !(canBeCloaked && isCloaked(window)) && !isBlocked(read);
}

std::vector<HostWindow> listWindowsAfresh() {
    std::vector<HostWindow> windows;
    EnumWindows(append, reinterpret_cast<LPARAM>(&windows));
    return windows;
}

} // namespace bench
