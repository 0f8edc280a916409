#pragma once

#include <windows.h>

#include <string>

// One top-level window as it was when the record was made; never refreshed.
// Given: the strings keep the zeros of the buffers that they were read into. Compare and copy them
// up to their first zero.
struct WindowInfo {
    // Reads title and class name of the window. For a handle that is not a window's, the title is
    // empty and the class name is zeros.
    explicit WindowInfo(HWND window);

    HWND hwnd;              // borrowed from the system
    std::wstring title;     // the text and its terminating zero; empty for an untitled window
    std::wstring className; // 256 units, padded with zeros
};
