#pragma once

#include "tools/vorlen-monitor-viewer/window_rows.h"

#include <windows.h>

#include <vector>

namespace vorlen::viewer {

// The list of the windows that are not capturable, the field that filters it and the box that sorts
// it: controls of the parent, which destroys them and passes their notifications on.
class WindowListView {
public:
    explicit WindowListView(HWND parent);
    ~WindowListView() = default;
    WindowListView(const WindowListView&) = delete;
    WindowListView& operator=(const WindowListView&) = delete;

    // Shows the windows that have a reason. The selected one stays selected.
    void show(const std::vector<tool::WindowRow>& windows);

    // Makes the columns as wide as the list, in the same proportions, after its size has changed.
    void fitColumns() const;

    // For WM_COMMAND of the field and the box.
    void handleFilter();
    void handleOrder();

    // For WM_NOTIFY of the list.
    void handleNotification(NMHDR& notification);

private:
    void makeControls(HWND parent);
    void fillHeadings() const;
    void sort(const Order& order);
    void refresh();
    void refreshSelection();
    void markSortedColumn() const;

    WindowRows rows;
    bool refreshing = false; // changes of the selection are not the user's
    HWND filter = nullptr;
    HWND orderBox = nullptr;
    HWND list = nullptr;
};

} // namespace vorlen::viewer
