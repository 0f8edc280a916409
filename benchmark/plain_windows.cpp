#include "benchmark/plain_windows.h"

#include <algorithm>
#include <cwchar>
#include <iterator>

namespace bench {

namespace {

constexpr wchar_t title[] = L"A document of some length - An application";
constexpr wchar_t className[] = L"ApplicationWindowClass";

std::size_t madeWindows = 0;

template <std::size_t units>
int copy(const wchar_t (&text)[units], LPWSTR field, int room) {
    const int copied = std::min(room, static_cast<int>(units)) - 1;
    *std::copy_n(text, copied, field) = L'\0';
    return copied;
}

BOOL WINAPI enumerate(WNDENUMPROC callback, LPARAM parameter) {
    for (std::size_t i = 0; i < madeWindows; ++i) {
        callback(PlainWindows::handle(i), parameter);
    }
    return TRUE;
}

int WINAPI getTextLength(HWND) {
    return static_cast<int>(std::size(title)) - 1;
}

int WINAPI getText(HWND, LPWSTR text, int units) {
    return copy(title, text, units);
}

int WINAPI getClassName(HWND, LPWSTR text, int units) {
    return copy(className, text, units);
}

LONG WINAPI getLong(HWND, int index) {
    return index == GWL_STYLE ? WS_VISIBLE : 0;
}

HWND WINAPI getAncestor(HWND window, UINT) {
    return window;
}

BOOL WINAPI yes(HWND) {
    return TRUE;
}

HWND WINAPI getShellWindow() {
    return nullptr;
}

LRESULT WINAPI takeMessage(HWND, UINT, WPARAM, LPARAM) {
    return 0;
}

} // namespace

PlainWindows::PlainWindows(HMODULE image, std::size_t count) {
    madeWindows = count;
    const auto replace = [&](const char* name, void* replacement) {
        redirects.emplace_back(image, name, replacement);
    };
    replace("EnumWindows", simulation::addressOf(enumerate));
    replace("GetWindowTextLengthW", simulation::addressOf(getTextLength));
    replace("GetWindowTextW", simulation::addressOf(getText));
    replace("GetClassNameW", simulation::addressOf(getClassName));
    replace("GetWindowLongW", simulation::addressOf(getLong));
    replace("GetAncestor", simulation::addressOf(getAncestor));
    replace("IsWindow", simulation::addressOf(yes));
    replace("IsWindowVisible", simulation::addressOf(yes));
    replace("GetShellWindow", simulation::addressOf(getShellWindow));
    replace("SendMessageW", simulation::addressOf(takeMessage));
}

HWND PlainWindows::handle(std::size_t n) {
    return reinterpret_cast<HWND>(0x100000 + 2 * n);
}

} // namespace bench
