#pragma once

#include <windows.h>

#include <string>

namespace tests {

// Another process with windows: see window_maker.cpp. While a command is carried out, the calling
// thread retrieves messages only where that is said.
class OtherProgram {
public:
    OtherProgram();
    ~OtherProgram();
    OtherProgram(const OtherProgram&) = delete;
    OtherProgram& operator=(const OtherProgram&) = delete;

    // Makes a hidden window. A popup, since Wine waits two seconds for the answer of a window
    // manager whenever it hides a window with a frame, and a virtual display has no window manager.
    HWND create(const std::wstring& title, DWORD style = WS_POPUP, DWORD extendedStyle = 0);
    void show(HWND window) { command("show", window); }
    void hide(HWND window) { command("hide", window); }
    void rename(HWND window, const std::wstring& title);
    void destroy(HWND window) { command("destroy", window); }

    HWND createShown(const std::wstring& title);

    // Makes so many windows that appear and go; retrieves messages until it is done.
    void makeSeries(int count);

    static constexpr const wchar_t* className = L"VorlenTestWindow";

private:
    void command(const std::string& name, HWND window);
    void send(const std::string& line);
    bool hasAnswer() const;
    std::string readAnswer();

    HANDLE process = nullptr;
    HANDLE input = nullptr;  // of the other program, written here
    HANDLE output = nullptr; // of the other program, read here
};

} // namespace tests
