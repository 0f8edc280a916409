#pragma once

#include "simulation/current.h"
#include "simulation/journal.h"
#include "simulation/redirects.h"

#include <windows.h>

#include <cstddef>
#include <deque>
#include <string>
#include <unordered_map>
#include <vector>

namespace simulation {

// A top-level window, capturable as it is made.
struct SimulatedWindow {
    HWND handle = nullptr;
    std::wstring title;
    std::wstring className;
    bool alive = true; // to a dead one every call answers as to a handle of no window
    bool visible = true;
    LONG style = WS_OVERLAPPEDWINDOW | WS_VISIBLE;
    LONG extendedStyle = WS_EX_APPWINDOW;
    HWND root = nullptr; // its own handle from the start

    // What DwmGetWindowAttribute answers about cloaking, and the value that it writes.
    HRESULT cloakingResult = S_OK;
    DWORD cloaked = 0;
};

// The windows of the desktop behind EnumWindows and the functions that ask about one window. A
// window dies or changes between two calls by an action of the journal. A planned failure of a
// function is the value that it returns.
class Windows : private Current<Windows> {
public:
    Windows(Redirects& redirects, Journal& calls);

    // Adds a window behind the others. It stays where it is as long as this object lives.
    SimulatedWindow& add(const std::wstring& title,
                         const std::wstring& className = L"ApplicationWindow");

    // The living or dead window, or null for a handle that was never one's.
    SimulatedWindow* find(HWND handle);

    // In which EnumWindows names the windows; dead ones are passed over.
    std::vector<HWND> order;

    HWND shellWindow = nullptr;

    // How often a function was asked about this window.
    std::size_t callsAbout(HWND handle) const;

private:
    friend class Current<Windows>;
    friend class Cloaking;

    // The living window; null, with the last error of the platform, for every other handle.
    static SimulatedWindow* ask(HWND handle);

    static WINBOOL WINAPI enumerate(WNDENUMPROC callback, LPARAM parameter);
    static int WINAPI getTextLength(HWND handle);
    static int WINAPI getText(HWND handle, LPWSTR text, int units);
    static int WINAPI getClassName(HWND handle, LPWSTR text, int units);
    static LONG WINAPI getLong(HWND handle, int index);
    static HWND WINAPI getAncestor(HWND handle, UINT kind);
    static WINBOOL WINAPI isWindow(HWND handle);
    static WINBOOL WINAPI isVisible(HWND handle);
    static HWND WINAPI getShellWindow();

    Journal& journal;
    std::deque<SimulatedWindow> all;
    std::unordered_map<HWND, SimulatedWindow*> byHandle;
    std::unordered_map<HWND, std::size_t> callCounts;
};

} // namespace simulation
