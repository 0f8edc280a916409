#pragma once

#include "simulation/import_redirect.h"

#include <windows.h>

#include <cstddef>
#include <deque>

namespace bench {

// While the object lives, replaces the window functions of a simulated desktop by functions that
// take almost no time: the desktop has any number of windows, every handle is that of a capturable
// window, and combo boxes accept every message.
class PlainWindows {
public:
    PlainWindows(HMODULE image, std::size_t count);

    // The handle of the n-th window, counted from 0.
    static HWND handle(std::size_t n);

private:
    std::deque<simulation::ImportRedirect> redirects;
};

} // namespace bench
