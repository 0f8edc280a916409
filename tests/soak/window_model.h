#pragma once

#include "simulation/windows.h"
#include "tests/support/simulation.h"

#include <windows.h>

#include <cstddef>
#include <string>
#include <vector>

namespace tests {

// The list of windows as the library promises it, in the simplest code. It may be slow.
class WindowModel {
public:
    struct Entry {
        HWND handle;
        std::wstring title;
        std::wstring className;
    };

    struct Box {
        HWND handle;
        std::vector<std::wstring> entries;
    };

    explicit WindowModel(Windows& simulatedWindows) : windows(simulatedWindows) {}

    // The windows of the desktop as they are now, in its order.
    void readDesktop();

    void registerBox(HWND handle);

    void receive(DWORD event, HWND handle, LONG object, LONG child);

    // In order of appearance, as they were then.
    std::vector<Entry> listed;

    // Each combo box once, with what it shows.
    std::vector<Box> boxes;

    // How many windows have entered and left so far, and how often a combo box without the entry
    // has replied with an error.
    std::size_t entered = 0;
    std::size_t left = 0;
    std::size_t refusals = 0;

private:
    bool isListed(HWND handle) const;
    bool isCapturable(HWND handle) const;
    void append(HWND handle);
    void remove(HWND handle);
    Box& boxOf(HWND handle);

    Windows& windows;
    std::vector<HWND> registrations; // in order, with repetitions
};

} // namespace tests
