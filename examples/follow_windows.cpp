// A host with a message loop: shows the monitors, again when the desktop changes, and the
// capturable windows as they come and go, for the named number of seconds or until Ctrl+C.
#include "vorlen/monitor.hpp"

#include <fcntl.h>
#include <io.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cwctype>
#include <exception>
#include <iostream>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

bool displayChanged = true; // so that the monitors are shown at first

// Only notes the change: an exception must not leave a window procedure.
LRESULT CALLBACK onMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    displayChanged = displayChanged || message == WM_DISPLAYCHANGE;
    return DefWindowProcW(window, message, wParam, lParam);
}

// A hidden top-level window receives WM_DISPLAYCHANGE. The timer wakes the message loop.
void makeWindowAndTimer() {
    WNDCLASSW windowClass{};
    windowClass.lpfnWndProc = onMessage;
    windowClass.lpszClassName = L"follow_windows";
    if (RegisterClassW(&windowClass) == 0 ||
        CreateWindowExW(0, L"follow_windows", L"", 0, 0, 0, 0, 0, nullptr, nullptr, nullptr,
                        nullptr) == nullptr ||
        SetTimer(nullptr, 0, 100, nullptr) == 0) {
        throw std::runtime_error("cannot make a window and a timer");
    }
}

void print(const wchar_t* what, const std::wstring& text, const std::wstring& detail) {
    std::wstring line = text + L" (" + detail + L")";
    // Texts come from other programs, and control characters would drive a terminal.
    std::replace_if(line.begin(), line.end(), std::iswcntrl, L'?');
    std::wprintf(L"%ls %ls\n", what, line.c_str());
    if (std::fflush(stdout) != 0) {
        throw std::runtime_error("cannot write to standard output; send it elsewhere");
    }
}

// Prints the windows of one list that the other one lacks.
void printMissing(const wchar_t* what, const std::vector<vorlen::Window>& some,
                  const std::vector<vorlen::Window>& others) {
    for (const vorlen::Window& window : some) {
        if (std::none_of(others.begin(), others.end(),
                         [&](const auto& other) { return other.handle == window.handle; })) {
            print(what, window.title, window.className);
        }
    }
}

void follow(const vorlen::Session& session, ULONGLONG end) {
    std::vector<vorlen::Window> listed;
    MSG message{};
    // Window events arrive while messages are retrieved.
    while (GetTickCount64() < end && GetMessageW(&message, nullptr, 0, 0) > 0) {
        DispatchMessageW(&message);
        if (displayChanged) {
            displayChanged = false;
            session.updateMonitors();
            for (const vorlen::Monitor& monitor : session.monitors()) {
                print(L"monitor", monitor.deviceName, monitor.friendlyName);
            }
        }
        const std::vector<vorlen::Window> now = session.windows();
        printMissing(L"-", listed, now);
        printMissing(L"+", now, listed);
        listed = now;
    }
}

} // namespace

int main(int count, char** arguments) try {
    _setmode(_fileno(stdout), _O_U8TEXT);
    const long seconds = count > 1 ? std::strtol(arguments[1], nullptr, 10) : 0;
    if (count > 2 || (count > 1 && seconds <= 0)) {
        std::cerr << "follow_windows: name the seconds to run, such as 10, or nothing\n";
        return EXIT_FAILURE;
    }
    const vorlen::Session session;
    makeWindowAndTimer();
    follow(session,
           seconds > 0 ? GetTickCount64() + 1000ULL * static_cast<ULONGLONG>(seconds) : ~0ULL);
    return EXIT_SUCCESS;
} catch (const std::exception& error) {
    std::cerr << "follow_windows: " << error.what() << '\n';
    return EXIT_FAILURE;
}
