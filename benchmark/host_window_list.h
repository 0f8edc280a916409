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

struct ProgramWindow {
    HWND window = nullptr;
    std::wstring title;
    std::wstring program; // a file name without folder; empty when the program may not be asked
};

// Lists the capturable windows as a host would do it without the library: every call enumerates
// the desktop, with the same filter as the library's.
std::vector<HostWindow> listWindowsAfresh();

// Lists windows as programs that share or record a window usually do: those with a title that are
// visible, not cloaked and no tool windows, with the file names of their programs.
std::vector<ProgramWindow> listWindowsOfPrograms();

// The filter: whether the window is capturable. Writes what was read of a capturable window.
bool isCapturable(HWND window, HostWindow& read);

} // namespace bench
