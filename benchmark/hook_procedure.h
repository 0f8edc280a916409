#pragma once

#include "simulation/import_redirect.h"

#include <windows.h>

namespace bench {

// Records the procedure that the library passes to SetWinEventHook while the object lives. The
// system still installs the hook.
class HookProcedure {
public:
    explicit HookProcedure(HMODULE image)
        : redirect(image, "SetWinEventHook", simulation::addressOf(install)) {
        original = reinterpret_cast<decltype(original)>(redirect.original());
    }

    // Calls the library's event procedure with an event, as the system would.
    static void deliver(DWORD event, HWND window, LONG object = OBJID_WINDOW,
                        LONG child = CHILDID_SELF) {
        procedure(nullptr, event, window, object, child, 0, 0);
    }

private:
    static HWINEVENTHOOK WINAPI install(DWORD first, DWORD last, HMODULE library,
                                        WINEVENTPROC handler, DWORD process, DWORD thread,
                                        DWORD flags) {
        procedure = handler;
        return original(first, last, library, handler, process, thread, flags);
    }

    static inline WINEVENTPROC procedure = nullptr;
    static inline decltype(&SetWinEventHook) original = nullptr;
    simulation::ImportRedirect redirect;
};

} // namespace bench
