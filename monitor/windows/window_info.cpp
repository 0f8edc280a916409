#include "monitor/windows/window_info.h"

#include <algorithm>
#include <cstddef>

namespace {

constexpr int classNameUnits = 256;

// A title that grows between the two calls is cut, one that shrinks is followed by more zeros.
std::wstring readTitle(HWND hwnd) {
    const int length = std::max(GetWindowTextLengthW(hwnd), 0);
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
