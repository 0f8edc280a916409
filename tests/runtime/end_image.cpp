// Calls a function when the process ends, after the libraries that were loaded later have handled
// the end.
#include <windows.h>

namespace {

void (*functionAtEnd)() = nullptr;

} // namespace

extern "C" __declspec(dllexport) void callAtEnd(void (*function)()) {
    functionAtEnd = function;
}

BOOL WINAPI DllMain(HINSTANCE, DWORD reason, LPVOID processEnds) {
    if (reason == DLL_PROCESS_DETACH && processEnds != nullptr && functionAtEnd != nullptr) {
        functionAtEnd();
    }
    return TRUE;
}
