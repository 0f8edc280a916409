// Opens two windows that can be shown on the kit monitor, for ./run on a virtual desktop, which has
// none by itself. Writes a line when they are shown, and ends when its standard input ends.
#include <windows.h>

#include <cstdio>
#include <cstdlib>
#include <thread>

namespace {

constexpr const wchar_t* windowClassName = L"Demonstration";

bool show(const wchar_t* title) {
    return CreateWindowExW(0, windowClassName, title, WS_OVERLAPPEDWINDOW | WS_VISIBLE,
                           CW_USEDEFAULT, CW_USEDEFAULT, 640, 480, nullptr, nullptr, nullptr,
                           nullptr) != nullptr;
}

void waitForEndOfInput() {
    while (std::getchar() != EOF) {
    }
}

} // namespace

int main() {
    WNDCLASSW windowClass{};
    windowClass.lpfnWndProc = DefWindowProcW;
    windowClass.lpszClassName = windowClassName;
    RegisterClassW(&windowClass);
    if (!show(L"A document") || !show(L"A picture") || std::puts("shown") == EOF ||
        std::fflush(stdout) != 0) {
        return EXIT_FAILURE;
    }
    std::thread([thread = GetCurrentThreadId()] {
        waitForEndOfInput();
        PostThreadMessageW(thread, WM_QUIT, 0, 0);
    }).detach();
    MSG message{};
    while (GetMessageW(&message, nullptr, 0, 0) > 0) {
        DispatchMessageW(&message);
    }
    return EXIT_SUCCESS;
}
