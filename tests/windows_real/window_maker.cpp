// A program with windows of its own, which a test makes, changes and destroys. One command per line
// on standard input, each answered by a line on standard output once it has been carried out:
//
//     create STYLE EXSTYLE TITLE   a hidden window; answers with its handle
//     show HANDLE
//     hide HANDLE
//     rename HANDLE TITLE
//     destroy HANDLE
//     series COUNT                 so many windows that appear and go, up to ten at a time
//
// Numbers are decimal, titles UTF-8. What the windows do is announced as events. It ends with its
// input.
#include <windows.h>

#include <deque>
#include <iostream>
#include <limits>
#include <sstream>
#include <stdexcept>
#include <string>

namespace {

const wchar_t* const className = L"VorlenTestWindow";

std::wstring toWide(const std::string& text) {
    std::wstring wide(text.size(), L'\0');
    const int units = MultiByteToWideChar(CP_UTF8, MB_ERR_INVALID_CHARS, text.data(),
                                          static_cast<int>(text.size()), wide.data(),
                                          static_cast<int>(wide.size()));
    wide.resize(static_cast<std::size_t>(units));
    return wide;
}

HWND create(DWORD style, DWORD extendedStyle, const std::wstring& title) {
    const HWND window = CreateWindowExW(extendedStyle, className, title.c_str(), style, 10, 10, 50,
                                        50, nullptr, nullptr, nullptr, nullptr);
    if (window == nullptr) {
        throw std::runtime_error("no window, error " + std::to_string(GetLastError()));
    }
    return window;
}

// Some systems announce by themselves, some do not; an event that comes twice must do no harm.
void announce(DWORD event, HWND window) {
    NotifyWinEvent(event, window, OBJID_WINDOW, CHILDID_SELF);
}

void show(HWND window) {
    ShowWindow(window, SW_SHOWNOACTIVATE);
    announce(EVENT_OBJECT_SHOW, window);
}

void hide(HWND window) {
    ShowWindow(window, SW_HIDE);
    announce(EVENT_OBJECT_HIDE, window);
}

void rename(HWND window, const std::wstring& title) {
    SetWindowTextW(window, title.c_str());
    announce(EVENT_OBJECT_NAMECHANGE, window);
}

void destroy(HWND window) {
    announce(EVENT_OBJECT_DESTROY, window);
    DestroyWindow(window);
}

void makeSeries(int count) {
    std::deque<HWND> windows;
    for (int i = 0; i < count; ++i) {
        windows.push_back(create(WS_POPUP, 0, L"series " + std::to_wstring(i)));
        show(windows.back());
        if (windows.size() == 10) {
            destroy(windows.front());
            windows.pop_front();
        }
    }
    while (!windows.empty()) {
        destroy(windows.back());
        windows.pop_back();
    }
}

std::wstring restOf(std::istream& line) {
    line.ignore(1);
    std::string rest;
    std::getline(line, rest);
    return toWide(rest);
}

HWND windowIn(std::istream& line) {
    std::intptr_t number = 0;
    line >> number;
    return reinterpret_cast<HWND>(number);
}

std::string answerTo(std::istream& line) {
    std::string command;
    line >> command;
    if (command == "create") {
        DWORD style = 0;
        DWORD extendedStyle = 0;
        line >> style >> extendedStyle;
        return std::to_string(
            reinterpret_cast<std::intptr_t>(create(style, extendedStyle, restOf(line))));
    }
    if (command == "series") {
        int count = 0;
        line >> count;
        makeSeries(count);
        return "done";
    }
    const HWND window = windowIn(line);
    if (command == "show") {
        show(window);
    } else if (command == "hide") {
        hide(window);
    } else if (command == "rename") {
        rename(window, restOf(line));
    } else if (command == "destroy") {
        destroy(window);
    } else {
        throw std::runtime_error("unknown command " + command);
    }
    return "done";
}

void CALLBACK ignoreEvent(HWINEVENTHOOK, DWORD, HWND, LONG, LONG, DWORD, DWORD) {}

// Wine sends no event from a thread that has not noticed yet that somebody is listening, which can
// take seconds. A hook of its own keeps it aware.
class Listener {
public:
    Listener()
        : hook(SetWinEventHook(EVENT_MIN, EVENT_MAX, nullptr, ignoreEvent, GetCurrentProcessId(),
                               GetCurrentThreadId(), WINEVENT_OUTOFCONTEXT)) {}
    ~Listener() { UnhookWinEvent(hook); }
    Listener(const Listener&) = delete;
    Listener& operator=(const Listener&) = delete;

private:
    HWINEVENTHOOK hook;
};

void dispatchMessages() {
    MSG message;
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE) != FALSE) {
        DispatchMessageW(&message);
    }
}

} // namespace

int main() {
    WNDCLASSW windowClass{};
    windowClass.lpfnWndProc = DefWindowProcW;
    windowClass.lpszClassName = className;
    RegisterClassW(&windowClass);
    try {
        const Listener listener;
        for (std::string text; std::getline(std::cin, text);) {
            std::istringstream line(text);
            const std::string answer = answerTo(line);
            dispatchMessages();
            std::cout << answer << std::endl;
        }
    } catch (const std::exception& error) {
        std::cerr << "window_maker: " << error.what() << '\n';
        return 1;
    }
    return 0;
}
