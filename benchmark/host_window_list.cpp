#include "benchmark/host_window_list.h"

#include <dwmapi.h>

#include <filesystem>

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

std::wstring programOf(HWND window) {
    DWORD id = 0;
    GetWindowThreadProcessId(window, &id);
    auto* const process = OpenProcess(PROCESS_QUERY_LIMITED_INFORMATION, FALSE, id);
    if (process == nullptr) {
        return {};
    }
    wchar_t path[MAX_PATH];
    DWORD length = MAX_PATH;
    const bool isKnown = QueryFullProcessImageNameW(process, 0, path, &length) != FALSE;
    CloseHandle(process);
    return isKnown ? std::filesystem::path(path, path + length).filename().wstring() : L"";
}

BOOL CALLBACK appendWithProgram(HWND window, LPARAM parameter) {
    wchar_t title[256];
    if (IsWindowVisible(window) == FALSE ||
        (GetWindowLongW(window, GWL_EXSTYLE) & WS_EX_TOOLWINDOW) != 0 || isCloaked(window)) {
        return TRUE;
    }
    const int length = GetWindowTextW(window, title, 256);
    if (length >= 1) {
        reinterpret_cast<std::vector<ProgramWindow>*>(parameter)->push_back(
            {window, std::wstring(title, static_cast<std::size_t>(length)), programOf(window)});
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

std::vector<ProgramWindow> listWindowsOfPrograms() {
    std::vector<ProgramWindow> windows;
    EnumWindows(appendWithProgram, reinterpret_cast<LPARAM>(&windows));
    return windows;
}

} // namespace bench
