#include "monitor/windows/window_info.h"

#include <algorithm>
#include <cstddef>
#include <limits>

namespace {

constexpr int classNameUnits = 256;

// A title that grows between the two calls is cut. One that shrinks is followed by more zeros.
std::wstring readTitle(HWND hwnd) {
    // The procedure of a window of the host's process can return any number.
    const int length =
        std::clamp(GetWindowTextLengthW(hwnd), 0, std::numeric_limits<int>::max() - 1);
    const int units = length >= 1 ? length + 1 : 0;
    std::wstring title(static_cast<std::size_t>(units), L'\0');
    GetWindowTextW(hwnd, title.data(), units);
    return title;
}

std::wstring readClassName(HWND hwnd) {
    std::wstring className(classNameUnits, L'\0');
    GetClassNameW(hwnd, className.data(), classNameUnits);
    return className;
}

} // namespace

WindowInfo::WindowInfo(HWND window)
    : hwnd(window), title(readTitle(window)), className(readClassName(window)) {}
