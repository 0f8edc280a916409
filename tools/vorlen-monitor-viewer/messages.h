#pragma once

#include "tools/vorlen-monitor/failure.h"

#include <windows.h>

#include <exception>
#include <functional>

// Messages of the calling thread, which owns all windows of the viewer.
namespace vorlen::viewer {

// Retrieves messages until the thread is asked to quit, or done() holds after a message. Keys that
// move between the controls of the window are carried out. Throws the failure that a window
// procedure has kept.
void runMessages(HWND window, const std::function<bool()>& done);

// For a handler of the current exception in a window procedure, which must not leave it: keeps it
// as a Failure, because its code may be in a library that is unloaded later, and asks the thread to
// quit.
void keepCurrentException();

// A window procedure that passes messages on to object.handleMessage(window, message, wParam,
// lParam). The object is the parameter of CreateWindowExW, and lives longer than the window.
template <typename Object>
LRESULT CALLBACK windowProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_NCCREATE) {
        const auto* const created = reinterpret_cast<const CREATESTRUCTW*>(lParam);
        SetWindowLongPtrW(window, GWLP_USERDATA,
                          reinterpret_cast<LONG_PTR>(created->lpCreateParams));
    }
    auto* const object = reinterpret_cast<Object*>(GetWindowLongPtrW(window, GWLP_USERDATA));
    if (object == nullptr) {
        return DefWindowProcW(window, message, wParam, lParam);
    }
    try {
        return object->handleMessage(window, message, wParam, lParam);
    } catch (...) {
        keepCurrentException();
        return 0;
    }
}

// Registers a window class with the procedure above. A class that is registered already stays.
template <typename Object>
void registerWindowClass(const wchar_t* name, HBRUSH background) {
    WNDCLASSW windowClass{};
    windowClass.lpfnWndProc = windowProcedure<Object>;
    windowClass.hInstance = GetModuleHandleW(nullptr);
    windowClass.hCursor = LoadCursorW(nullptr, IDC_ARROW);
    windowClass.hIcon = LoadIconW(nullptr, IDI_APPLICATION);
    windowClass.hbrBackground = background;
    windowClass.lpszClassName = name;
    RegisterClassW(&windowClass);
}

// Throws a Failure when the system could not make the window.
HWND checkedWindow(HWND window);

} // namespace vorlen::viewer
