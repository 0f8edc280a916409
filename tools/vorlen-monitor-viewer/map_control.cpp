#include "tools/vorlen-monitor-viewer/map_control.h"

#include "platform/safe_text.h"
#include "tools/vorlen-monitor-viewer/control_ids.h"
#include "tools/vorlen-monitor-viewer/gdi.h"
#include "tools/vorlen-monitor-viewer/layout.h"
#include "tools/vorlen-monitor-viewer/map_drawing.h"
#include "tools/vorlen-monitor-viewer/map_places.h"
#include "tools/vorlen-monitor-viewer/messages.h"

#include <windowsx.h>

#include <algorithm>

namespace vorlen::viewer {

MapControl::MapControl(HWND parent, int id, Monitors& shown)
    : monitors(shown), window(makeWindow(parent, id)) {}

HWND MapControl::makeWindow(HWND parent, int id) {
    registerWindowClass<MapControl>(mapClass, nullptr);
    return checkedWindow(CreateWindowExW(
        WS_EX_CLIENTEDGE, mapClass, L"", WS_CHILD | WS_VISIBLE | WS_TABSTOP, 0, 0, 0, 0, parent,
        reinterpret_cast<HMENU>(INT_PTR{id}), GetModuleHandleW(nullptr), this));
}

void MapControl::refresh() const {
    SetWindowTextW(window, toUtf16Lossy(monitors.description()).c_str());
    InvalidateRect(window, nullptr, FALSE);
}

LRESULT MapControl::handleMessage(HWND target, UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
    case WM_ERASEBKGND:
        return TRUE; // painting covers everything
    case WM_PAINT: {
        PAINTSTRUCT painting{};
        paint(BeginPaint(target, &painting));
        EndPaint(target, &painting);
        return 0;
    }
    case WM_SIZE:
    case WM_SETFOCUS:
    case WM_KILLFOCUS:
    case WM_SYSCOLORCHANGE:
        InvalidateRect(target, nullptr, FALSE);
        return 0;
    case WM_SETFONT:
        font = reinterpret_cast<HFONT>(wParam);
        InvalidateRect(target, nullptr, FALSE);
        return 0;
    case WM_GETFONT:
        return reinterpret_cast<LRESULT>(font);
    case WM_GETDLGCODE:
        return DLGC_WANTARROWS;
    case WM_LBUTTONDOWN:
        SetFocus(target);
        if (const auto hit = monitorAt(places(), GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam))) {
            select(*hit);
        }
        return 0;
    case WM_KEYDOWN:
        handleKey(wParam);
        return 0;
    default:
        return DefWindowProcW(target, message, wParam, lParam);
    }
}

std::vector<Area> MapControl::places() const {
    RECT client{};
    GetClientRect(window, &client);
    const int margin = scaled(6, static_cast<int>(GetDpiForWindow(window)));
    const int width = std::max(static_cast<int>(client.right) - 2 * margin, 1);
    const int height = std::max(static_cast<int>(client.bottom) - 2 * margin, 1);
    return placesOnMap(monitors.areas(), {margin, margin, width, height});
}

void MapControl::select(std::size_t index) const {
    if (index == monitors.selected()) {
        return;
    }
    monitors.select(index);
    SendMessageW(GetParent(window), WM_COMMAND, MAKEWPARAM(GetDlgCtrlID(window), selectionChanged),
                 reinterpret_cast<LPARAM>(window));
}

void MapControl::handleKey(WPARAM key) const {
    const auto selected = monitors.selected();
    if (!selected) {
        return;
    }
    switch (key) {
    case VK_LEFT:
        return select(neighbour(places(), *selected, Direction::left));
    case VK_RIGHT:
        return select(neighbour(places(), *selected, Direction::right));
    case VK_UP:
        return select(neighbour(places(), *selected, Direction::up));
    case VK_DOWN:
        return select(neighbour(places(), *selected, Direction::down));
    case VK_HOME:
        return select(0);
    case VK_END:
        return select(monitors.all().size() - 1);
    default:
        return;
    }
}

// Drawn in memory first, so that nothing flickers.
void MapControl::paint(HDC target) const {
    RECT client{};
    GetClientRect(window, &client);
    const MemoryContext context(CreateCompatibleDC(target));
    const Bitmap bitmap(CreateCompatibleBitmap(target, client.right, client.bottom));
    const Selection bitmapSelected(context.get(), bitmap.get());
    const Selection fontSelected(context.get(), font);
    drawMap(context.get(), client,
            {monitors.all(), places(), monitors.selected(), GetFocus() == window,
             static_cast<int>(GetDpiForWindow(window))});
    BitBlt(target, 0, 0, client.right, client.bottom, context.get(), 0, 0, SRCCOPY);
}

} // namespace vorlen::viewer
