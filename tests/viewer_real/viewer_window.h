#pragma once

#include "tools/vorlen-monitor-viewer/control_ids.h"
#include "vorlen/monitor.h"

#include <windows.h>

#include <string>
#include <vector>

namespace vorlen::tool {
class Service;
}

// What a test reads in the window of the viewer, and does to it.
namespace tests {

std::wstring textOf(HWND window, int control);

std::vector<std::wstring> comboBoxEntries(HWND window, int control);

// The text of the selected entry of a combo box; empty when none is selected.
std::wstring selectedEntry(HWND window, int control);

// As a user does.
void choose(HWND window, int control, int entry);
void press(HWND window, int button);
void pressKey(HWND window, int control, WPARAM key);

// The titles in the list of windows.
std::vector<std::wstring> listedTitles(HWND window);

// What the exports of the library return.
std::vector<std::wstring> exportedDeviceNames(const vorlen::tool::Service& service);
std::vector<std::wstring> exportedTitles(const vorlen::tool::Service& service);

} // namespace tests
