#pragma once

#include "simulation/import_redirect.h"

#include <windows.h>

#include <cstddef>
#include <deque>

namespace bench {

// The windows' part of a platform that costs next to nothing: every handle is that of a window that
// is capturable, any number of them is on the desktop when the library starts, and combo boxes
// take every message. While the object lives; it is to be put over a simulated desktop.
class PlainWindows {
public:
    PlainWindows(HMODULE image, std::size_t count);

    // The handle of the n-th window, 0 being the first.
    static HWND handle(std::size_t n);

private:
    std::deque<tests::ImportRedirect> redirects;
};

} // namespace bench
