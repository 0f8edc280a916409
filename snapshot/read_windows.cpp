#include "platform/for_each.h"
#include "snapshot/parts.h"

#include <dwmapi.h>

#include <algorithm>
#include <cstddef>
#include <limits>

namespace snapshot {

namespace {

constexpr int classNameUnits = 257; // a class name has at most 256

std::wstring readTitle(HWND window, int length) {
    std::wstring title(static_cast<std::size_t>(length) + 1, L'\0');
    title.resize(
        static_cast<std::size_t>(std::max(GetWindowTextW(window, title.data(), length + 1), 0)));
    return title;
}

std::wstring readClassName(HWND window) {
    std::wstring name(classNameUnits, L'\0');
    name.resize(static_cast<std::size_t>(GetClassNameW(window, name.data(), classNameUnits)));
    return name;
}

Window readWindow(HWND handle, const ReasonOf& reasonOf) {
    Window window;
    window.handle = reinterpret_cast<std::uintptr_t>(handle);
    window.titleLength = GetWindowTextLengthW(handle);
    if (window.titleLength > 0 && window.titleLength < std::numeric_limits<int>::max()) {
        window.title = readTitle(handle, window.titleLength);
    }
    window.className = readClassName(handle);
    window.visible = IsWindowVisible(handle) != FALSE;
    window.style = GetWindowLongW(handle, GWL_STYLE);
    window.extendedStyle = GetWindowLongW(handle, GWL_EXSTYLE);
    window.root = reinterpret_cast<std::uintptr_t>(GetAncestor(handle, GA_ROOT));
    DWORD cloaked = 0;
    window.cloakingResult = DwmGetWindowAttribute(handle, DWMWA_CLOAKED, &cloaked, sizeof(cloaked));
    window.cloaked = cloaked;
    window.reason = reasonOf(handle);
    window.exists = IsWindow(handle) != FALSE;
    return window;
}

} // namespace

std::vector<Window> readWindows(const ReasonOf& reasonOf) {
    std::vector<Window> windows;
    vorlen::forEachWindow([&](HWND window) { windows.push_back(readWindow(window, reasonOf)); });
    return windows;
}

} // namespace snapshot
