#include "runtime/log_output.h"

#include <windows.h>

BOOL WINAPI DllMain(HINSTANCE, DWORD reason, LPVOID processEnds) {
    // Not at the end of the process: images that were loaded before this one may still log then,
    // and the system closes the file.
    if (reason == DLL_PROCESS_DETACH && processEnds == nullptr) {
        vorlen::log::closeLogOutput();
    }
    return TRUE;
}
