#include "runtime/log_output.h"

#include <windows.h>

BOOL WINAPI DllMain(HINSTANCE, DWORD reason, LPVOID processEnds) {
    // When the process ends, images that were loaded before this one may still log, and the system
    // closes the file.
    if (reason == DLL_PROCESS_DETACH && processEnds == nullptr) {
        vorlen::log::closeLogOutput();
    }
    return TRUE;
}
