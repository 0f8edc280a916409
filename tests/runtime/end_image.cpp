// Calls a function when the process ends. The libraries that were loaded after this one have been
// told by then.
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
