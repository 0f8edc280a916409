#include "tests/viewer_real/viewer_window.h"

#include "tools/vorlen-monitor-viewer/controls.h"
#include "tools/vorlen-monitor/libraries.h"
#include "tools/vorlen-monitor/monitors_command.h"
#include "tools/vorlen-monitor/records.h"

#include <commctrl.h>

#include <algorithm>

namespace tests {

std::wstring textOf(HWND window, int control) {
    return vorlen::viewer::textOf(GetDlgItem(window, control));
}

std::vector<std::wstring> comboBoxEntries(HWND window, int control) {
    const HWND box = GetDlgItem(window, control);
    std::vector<std::wstring> entries;
    const LRESULT count = SendMessageW(box, CB_GETCOUNT, 0, 0);
    for (WPARAM i = 0; static_cast<LRESULT>(i) < count; ++i) {
        std::wstring entry(static_cast<std::size_t>(SendMessageW(box, CB_GETLBTEXTLEN, i, 0)),
                           L'\0');
        SendMessageW(box, CB_GETLBTEXT, i, reinterpret_cast<LPARAM>(entry.data()));
        entries.push_back(entry);
    }
    return entries;
}

std::wstring selectedEntry(HWND window, int control) {
    const LRESULT selected = SendDlgItemMessageW(window, control, CB_GETCURSEL, 0, 0);
    return selected >= 0 ? comboBoxEntries(window, control).at(static_cast<std::size_t>(selected))
                         : std::wstring();
}

void choose(HWND window, int control, int entry) {
    SendDlgItemMessageW(window, control, CB_SETCURSEL, static_cast<WPARAM>(entry), 0);
    SendMessageW(window, WM_COMMAND, MAKEWPARAM(control, CBN_SELCHANGE),
                 reinterpret_cast<LPARAM>(GetDlgItem(window, control)));
}

void press(HWND window, int button) {
    SendDlgItemMessageW(window, button, BM_CLICK, 0, 0);
}

void pressKey(HWND window, int control, WPARAM key) {
    SendDlgItemMessageW(window, control, WM_KEYDOWN, key, 1);
}

std::vector<std::wstring> listedTitles(HWND window) {
    const HWND list = GetDlgItem(window, vorlen::viewer::windowList);
    std::vector<std::wstring> titles;
    const LRESULT count = SendMessageW(list, LVM_GETITEMCOUNT, 0, 0);
    for (WPARAM i = 0; static_cast<LRESULT>(i) < count; ++i) {
        wchar_t text[256]{};
        LVITEMW item{};
        item.pszText = text;
        item.cchTextMax = 256;
        SendMessageW(list, LVM_GETITEMTEXTW, i, reinterpret_cast<LPARAM>(&item));
        titles.emplace_back(text);
    }
    return titles;
}

std::vector<std::wstring> exportedDeviceNames(const vorlen::tool::Service& service) {
    std::vector<std::wstring> names;
    for (const MonitorListItem& monitor : vorlen::tool::readMonitors(service)) {
        names.emplace_back(monitor.deviceName);
    }
    return names;
}

std::vector<std::wstring> exportedTitles(const vorlen::tool::Service& service) {
    std::vector<std::wstring> titles;
    for (const WindowListItem& window :
         vorlen::tool::readRecords(service.function<decltype(::getWindowList)>("getWindowList"))) {
        titles.emplace_back(window.title);
    }
    return titles;
}

} // namespace tests
