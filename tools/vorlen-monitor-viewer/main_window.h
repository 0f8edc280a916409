#pragma once

#include "tools/vorlen-monitor-viewer/desktop_reader.h"
#include "tools/vorlen-monitor-viewer/gdi.h"
#include "tools/vorlen-monitor-viewer/layout.h"
#include "tools/vorlen-monitor-viewer/log_capture.h"
#include "tools/vorlen-monitor-viewer/map_control.h"
#include "tools/vorlen-monitor-viewer/monitors.h"
#include "tools/vorlen-monitor-viewer/viewed_desktop.h"
#include "tools/vorlen-monitor-viewer/window_list_view.h"
#include "tools/vorlen-monitor/doctor/examination.h"
#include "tools/vorlen-monitor/doctor/finding.h"

#include <windows.h>

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <type_traits>
#include <vector>

namespace vorlen::viewer {

// The window of the viewer, on the service thread. It follows the desktop while that thread
// retrieves messages. Closing it asks the thread to quit.
class MainWindow {
public:
    // The window is hidden at first, and has its preferred size. The service of the desktop and the
    // log live longer than it. Throws a Failure.
    MainWindow(const ViewedDesktop& viewed, LogCapture& captured);
    ~MainWindow();
    MainWindow(const MainWindow&) = delete;
    MainWindow& operator=(const MainWindow&) = delete;

    // Null after the user has closed the window.
    HWND handle() const { return window.get(); }

    // Shows the window inside the work area of its monitor.
    void show();

    // Shows it in its preferred size, and does not activate it.
    void showForPicture() const;

    // Whether the desktop is being read, so that findings and status may be missing or old.
    bool isExamining() const { return reader->isReading(); }

    LRESULT handleMessage(HWND target, UINT message, WPARAM wParam, LPARAM lParam);

private:
    using Action = std::function<void()>;

    struct DestroyOwned {
        void operator()(HWND made) const { DestroyWindow(made); }
    };

    void makeControls();
    void fillWindowBox();
    void applyFont();
    void placeControls();
    Metrics metrics() const;
    Area withFrame(const Area& contents) const;
    void moveIntoMonitor() const;

    void handleCommand(int id, int code);
    void handleTimer(WPARAM timer);
    void selectFromBox();
    void keepWindowSelection();

    void refreshMonitors();
    void showMonitors();
    void showSelection();
    void showLog();

    // Reads the desktop, runs the check and shows the findings; then runs the action.
    void examine(Action then);
    void startReading();
    void finishReading();

    void copyReport();
    void saveRecording();
    void attempt(const Action& action) const;
    bool isRedacting() const;

    const ViewedDesktop& desktop;
    LogCapture& log;
    Monitors monitors;
    std::optional<tool::Examination> examination; // nothing before the first reading
    std::vector<tool::Finding> findings;          // of the examination
    std::vector<Action> waiting;                  // for the next reading
    std::vector<Action> current;                  // for the reading that is being made
    HWND selectedWindow = nullptr;                // in the box of windows
    HWND lastFocus = nullptr;                     // the control that gets the focus with the window
    Font font;
    std::optional<DesktopReader> reader;
    std::optional<MapControl> map;
    std::optional<WindowListView> windowListView;
    // Null when the user has closed it. Destroyed first.
    std::unique_ptr<std::remove_pointer_t<HWND>, DestroyOwned> window;
};

} // namespace vorlen::viewer
