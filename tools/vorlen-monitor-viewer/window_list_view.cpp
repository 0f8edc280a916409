#include "tools/vorlen-monitor-viewer/window_list_view.h"

#include "tools/vorlen-monitor-viewer/controls.h"

#include <commctrl.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <numeric>
#include <string>

namespace vorlen::viewer {

namespace {

struct ColumnLook {
    const wchar_t* heading;
    int share; // of the width of the list, until the user changes it
};

// By Column.
constexpr std::array<ColumnLook, columnCount> columns = {
    {{L"Title", 40}, {L"Class", 25}, {L"Reason", 20}, {L"Handle", 15}}};

// Two entries for each column: ascending, then descending.
int entryOf(const Order& order) {
    return 2 * static_cast<int>(order.column) + (order.descending ? 1 : 0);
}

Order orderOf(int entry) {
    return {static_cast<Column>(entry / 2), entry % 2 != 0};
}

} // namespace

WindowListView::WindowListView(HWND parent) {
    makeControls(parent);
    fillHeadings();
    sort({Column::reason, false});
}

void WindowListView::makeControls(HWND parent) {
    makeControl(parent, filterLabel, WC_STATICW, L"Fi&lter:", 0);
    filter = makeControl(parent, filterControl, WC_EDITW, L"", WS_TABSTOP | ES_AUTOHSCROLL,
                         WS_EX_CLIENTEDGE);
    makeControl(parent, orderLabel, WC_STATICW, L"Sort &by:", 0);
    orderBox = makeControl(parent, viewer::orderBox, WC_COMBOBOXW, L"",
                           WS_TABSTOP | WS_VSCROLL | CBS_DROPDOWNLIST);
    makeControl(parent, windowListLabel, WC_STATICW, L"&Not capturable windows", 0);
    list = makeControl(parent, windowList, WC_LISTVIEWW, L"Not capturable windows",
                       WS_TABSTOP | LVS_REPORT | LVS_OWNERDATA | LVS_SINGLESEL | LVS_SHOWSELALWAYS,
                       WS_EX_CLIENTEDGE);
    SendMessageW(list, LVM_SETEXTENDEDLISTVIEWSTYLE, 0, LVS_EX_FULLROWSELECT | LVS_EX_DOUBLEBUFFER);
}

// Of the list and of the box.
void WindowListView::fillHeadings() const {
    for (std::size_t i = 0; i < columnCount; ++i) {
        std::wstring heading = columns.at(i).heading;
        LVCOLUMNW column{};
        column.mask = LVCF_TEXT | LVCF_WIDTH;
        column.cx = columns.at(i).share;
        column.pszText = heading.data();
        SendMessageW(list, LVM_INSERTCOLUMNW, i, reinterpret_cast<LPARAM>(&column));
        for (const wchar_t* const direction : {L"", L" (descending)"}) {
            const std::wstring entry = heading + direction;
            SendMessageW(orderBox, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(entry.c_str()));
        }
    }
}

void WindowListView::show(const std::vector<tool::WindowRow>& windows) {
    if (rows.setWindows(windows)) {
        refresh();
    }
}

void WindowListView::fitColumns() const {
    RECT client{};
    GetClientRect(list, &client);
    // Room for the scroll bar, which may not be there yet.
    const int width = client.right - GetSystemMetricsForDpi(SM_CXVSCROLL, GetDpiForWindow(list));
    std::array<int, columnCount> widths{};
    for (std::size_t i = 0; i < columnCount; ++i) {
        widths.at(i) = static_cast<int>(SendMessageW(list, LVM_GETCOLUMNWIDTH, i, 0));
    }
    const int sum = std::accumulate(widths.begin(), widths.end(), 0);
    if (width <= 0 || sum == 0) {
        return;
    }
    for (std::size_t i = 0; i < columnCount; ++i) {
        SendMessageW(list, LVM_SETCOLUMNWIDTH, i, width * widths.at(i) / sum);
    }
}

void WindowListView::handleFilter() {
    rows.setFilter(textOf(filter));
    refresh();
}

void WindowListView::handleOrder() {
    sort(orderOf(static_cast<int>(SendMessageW(orderBox, CB_GETCURSEL, 0, 0))));
}

void WindowListView::handleNotification(NMHDR& notification) {
    switch (notification.code) {
    case LVN_GETDISPINFOW: {
        LVITEMW& item = reinterpret_cast<NMLVDISPINFOW&>(notification).item;
        const auto line = static_cast<std::size_t>(item.iItem);
        const auto column = static_cast<std::size_t>(item.iSubItem);
        if ((item.mask & LVIF_TEXT) != 0 && line < rows.lines().size() && column < columnCount) {
            const std::size_t room = static_cast<std::size_t>(item.cchTextMax) - 1;
            item.pszText[rows.lines()[line].cells.at(column).copy(item.pszText, room)] = L'\0';
        }
        break;
    }
    case LVN_ITEMCHANGED:
    case LVN_ODSTATECHANGED:
        if (!refreshing) {
            const auto line = static_cast<int>(
                SendMessageW(list, LVM_GETNEXTITEM, static_cast<WPARAM>(-1), LVNI_SELECTED));
            rows.select(line >= 0 ? std::optional(static_cast<std::size_t>(line)) : std::nullopt);
        }
        break;
    case LVN_COLUMNCLICK: {
        const auto column =
            static_cast<Column>(reinterpret_cast<NMLISTVIEW&>(notification).iSubItem);
        const Order& order = rows.order();
        sort({column, column == order.column && !order.descending});
        break;
    }
    default:
        break;
    }
}

void WindowListView::sort(const Order& order) {
    rows.setOrder(order);
    SendMessageW(orderBox, CB_SETCURSEL, static_cast<WPARAM>(entryOf(order)), 0);
    markSortedColumn();
    refresh();
    if (const auto line = rows.selected()) {
        SendMessageW(list, LVM_ENSUREVISIBLE, *line, FALSE);
    }
}

void WindowListView::refresh() {
    refreshing = true;
    SendMessageW(list, LVM_SETITEMCOUNT, rows.lines().size(), LVSICF_NOSCROLL);
    refreshSelection();
    refreshing = false;
    InvalidateRect(list, nullptr, FALSE);
}

// Without a selected line, the line with the focus stays: the arrow keys go on from there.
void WindowListView::refreshSelection() {
    LVITEMW item{};
    item.stateMask = LVIS_SELECTED;
    SendMessageW(list, LVM_SETITEMSTATE, static_cast<WPARAM>(-1), reinterpret_cast<LPARAM>(&item));
    if (const auto line = rows.selected()) {
        item.state = item.stateMask = LVIS_SELECTED | LVIS_FOCUSED;
        SendMessageW(list, LVM_SETITEMSTATE, *line, reinterpret_cast<LPARAM>(&item));
    }
}

void WindowListView::markSortedColumn() const {
    auto* const header = reinterpret_cast<HWND>(SendMessageW(list, LVM_GETHEADER, 0, 0));
    for (std::size_t i = 0; i < columnCount; ++i) {
        HDITEMW item{};
        item.mask = HDI_FORMAT;
        SendMessageW(header, HDM_GETITEMW, i, reinterpret_cast<LPARAM>(&item));
        item.fmt &= ~(HDF_SORTUP | HDF_SORTDOWN);
        if (i == static_cast<std::size_t>(rows.order().column)) {
            item.fmt |= rows.order().descending ? HDF_SORTDOWN : HDF_SORTUP;
        }
        SendMessageW(header, HDM_SETITEMW, i, reinterpret_cast<LPARAM>(&item));
    }
}

} // namespace vorlen::viewer
