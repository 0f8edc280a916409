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

// What a host would write itself to list the windows that can be shown: the desktop is enumerated
// anew on every call, with the same filter as the library's.
std::vector<HostWindow> listWindowsAfresh();

// The filter: whether the window can be shown, and what was read of it.
bool isCapturable(HWND window, HostWindow& read);

} // namespace bench
