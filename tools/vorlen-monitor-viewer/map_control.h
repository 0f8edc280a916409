#pragma once

#include "tools/vorlen-monitor-viewer/area.h"
#include "tools/vorlen-monitor-viewer/monitors.h"

#include <windows.h>

#include <vector>

namespace vorlen::viewer {

// The map of the monitors: a child window of the class mapClass. The arrow keys, Home, End and a
// click select a monitor; the parent then receives WM_COMMAND with the code below. The text of the
// window describes the map.
class MapControl {
public:
    static constexpr WORD selectionChanged = 1;

    // The monitors live longer than the control, which the parent destroys.
    MapControl(HWND parent, int id, Monitors& shown);
    ~MapControl() = default;
    MapControl(const MapControl&) = delete;
    MapControl& operator=(const MapControl&) = delete;

    HWND handle() const { return window; }

    // After the monitors or the selection have changed.
    void refresh() const;

    LRESULT handleMessage(HWND target, UINT message, WPARAM wParam, LPARAM lParam);

private:
    HWND makeWindow(HWND parent, int id);
    std::vector<Area> places() const;
    void select(std::size_t index) const;
    void handleKey(WPARAM key) const;
    void paint(HDC target) const;

    Monitors& monitors;
    HFONT font = nullptr; // the parent's
    HWND window;
};

} // namespace vorlen::viewer
