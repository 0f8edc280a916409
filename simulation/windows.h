#pragma once

#include "simulation/current.h"
#include "simulation/journal.h"
#include "simulation/redirects.h"

#include <windows.h>

#include <cstddef>
#include <deque>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

namespace simulation {

// A top-level window. As constructed by Windows::add, it is capturable.
struct SimulatedWindow {
    HWND handle = nullptr;
    std::wstring title;
    std::optional<int> titleLength; // of GetWindowTextLengthW; nothing: the length of the title
    std::wstring className;
    bool alive = true;  // when false, every call answers as for an invalid handle
    bool exists = true; // the result of IsWindow while it is alive
    bool visible = true;
    LONG style = WS_OVERLAPPEDWINDOW | WS_VISIBLE;
    LONG extendedStyle = WS_EX_APPWINDOW;
    HWND root = nullptr; // Windows::add sets the window's own handle

    // The result of DwmGetWindowAttribute for DWMWA_CLOAKED, and the value that it writes.
    HRESULT cloakingResult = S_OK;
    DWORD cloaked = 0;
};

// The windows of the desktop behind EnumWindows and the functions that read one window. With an
// action of the journal, a test destroys or changes a window between two calls. The status of a
// planned failure is the value that the function returns.
class Windows : private Current<Windows> {
public:
    Windows(Redirects& redirects, Journal& calls);

    // Adds a window after the others. The reference is valid as long as this object.
    SimulatedWindow& add(const std::wstring& title,
                         const std::wstring& className = L"ApplicationWindow");

    // The same with a window whose handle and root the caller has chosen. No other window has the
    // handle.
    SimulatedWindow& add(const SimulatedWindow& window);

    // The window with the handle, alive or not; null for any other handle.
    SimulatedWindow* find(HWND handle);

    // The order of the windows in EnumWindows, which skips windows that are not alive.
    std::vector<HWND> order;

    HWND shellWindow = nullptr;

    // The number of calls with this handle.
    std::size_t callsAbout(HWND handle) const;

private:
    friend class Current<Windows>;
    friend class Cloaking;

    // Counts a call with the handle. Returns the window if it is alive; else sets the last error
    // of an invalid window handle and returns null.
    static SimulatedWindow* ask(HWND handle);

    static BOOL WINAPI enumerate(WNDENUMPROC callback, LPARAM parameter);
    static int WINAPI getTextLength(HWND handle);
    static int WINAPI getText(HWND handle, LPWSTR text, int units);
    static int WINAPI getClassName(HWND handle, LPWSTR text, int units);
    static LONG WINAPI getLong(HWND handle, int index);
    static HWND WINAPI getAncestor(HWND handle, UINT kind);
    static BOOL WINAPI isWindow(HWND handle);
    static BOOL WINAPI isVisible(HWND handle);
    static HWND WINAPI getShellWindow();

    Journal& journal;
    std::deque<SimulatedWindow> all;
    std::unordered_map<HWND, SimulatedWindow*> byHandle;
    std::unordered_map<HWND, std::size_t> callCounts;
};

} // namespace simulation
