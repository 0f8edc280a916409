#include "tools/vorlen-monitor-viewer/controls.h"

#include "tools/vorlen-monitor-viewer/messages.h"

#include <windows.h>

#include <commctrl.h>

namespace vorlen::viewer {

namespace {

// A field of several lines takes all keys, except in a window of the system's dialog class.
LRESULT CALLBACK leaveKeysToDialog(HWND window, UINT message, WPARAM wParam, LPARAM lParam,
                                   UINT_PTR, DWORD_PTR) {
    const LRESULT result = DefSubclassProc(window, message, wParam, lParam);
    return message == WM_GETDLGCODE
               ? (result & ~LRESULT{DLGC_WANTALLKEYS | DLGC_WANTTAB | DLGC_HASSETSEL}) |
                     DLGC_WANTARROWS
               : result;
}

} // namespace

HWND makeControl(HWND parent, ControlId id, const wchar_t* className, const wchar_t* text,
                 DWORD style, DWORD extendedStyle) {
    return checkedWindow(CreateWindowExW(
        extendedStyle, className, text, WS_CHILD | WS_VISIBLE | style, 0, 0, 0, 0, parent,
        reinterpret_cast<HMENU>(INT_PTR{id}), GetModuleHandleW(nullptr), nullptr));
}

HWND makeTextField(HWND parent, ControlId id) {
    const HWND field = makeControl(
        parent, id, WC_EDITW, L"",
        WS_TABSTOP | WS_VSCROLL | ES_MULTILINE | ES_READONLY | ES_AUTOVSCROLL, WS_EX_CLIENTEDGE);
    SetWindowSubclass(field, leaveKeysToDialog, 0, 0);
    return field;
}

std::wstring textOf(HWND window) {
    std::wstring text(static_cast<std::size_t>(GetWindowTextLengthW(window)) + 1, L'\0');
    text.resize(static_cast<std::size_t>(
        GetWindowTextW(window, text.data(), static_cast<int>(text.size()))));
    return text;
}

void setText(HWND window, const std::wstring& text) {
    if (textOf(window) != text) {
        SetWindowTextW(window, text.c_str());
    }
}

} // namespace vorlen::viewer
