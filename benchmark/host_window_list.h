#pragma once

#include <windows.h>

#include <string>
#include <vector>

namespace bench {

struct HostWindow {
    HWND window = nullptr;
    std::wstring title;
    std::wstring className;
};

// Lists the capturable windows as a host would do it without the library: every call enumerates
// the desktop, with the same filter as the library's.
std::vector<HostWindow> listWindowsAfresh();

// The filter: whether the window is capturable. Writes what was read of a capturable window.
bool isCapturable(HWND window, HostWindow& read);

} // namespace bench
