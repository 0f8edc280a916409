#include "simulation/event_hooks.h"

#include "simulation/expect.h"

#include <algorithm>

namespace simulation {

EventHooks::EventHooks(Redirects& redirects, Journal& calls) : journal(calls) {
    redirects.replace<decltype(SetWinEventHook)>("SetWinEventHook", install);
    redirects.replace<decltype(UnhookWinEvent)>("UnhookWinEvent", release);
    redirects.replace<decltype(GetModuleHandleExW)>("GetModuleHandleExW", findImage);
}

EventHooks::~EventHooks() {
    SIMULATION_EXPECT(installed() == leftInstalled, "event hooks were left installed");
}

void EventHooks::deliver(DWORD event, HWND window, LONG object, LONG child) {
    // An event procedure may install and release hooks.
    const std::size_t count = all.size();
    for (std::size_t i = 0; i < count; ++i) {
        const SimulatedEventHook hook = all[i];
        if (!hook.released && hook.thread == GetCurrentThreadId()) {
            hook.procedure(hook.handle, event, window, object, child, hook.thread, 0);
        }
    }
}

std::size_t EventHooks::installed() const {
    return static_cast<std::size_t>(
        std::ranges::count_if(all, [](const auto& hook) { return !hook.released; }));
}

HWINEVENTHOOK WINAPI EventHooks::install(DWORD firstEvent, DWORD lastEvent, HMODULE library,
                                         WINEVENTPROC procedure, DWORD process, DWORD thread,
                                         DWORD flags) {
    SIMULATION_EXPECT(firstEvent == 0x8001u, "the first event must be EVENT_OBJECT_DESTROY");
    SIMULATION_EXPECT(lastEvent == 0x8018u, "the last event must be EVENT_OBJECT_UNCLOAKED");
    SIMULATION_EXPECT(library == nullptr);
    SIMULATION_EXPECT(procedure != nullptr);
    SIMULATION_EXPECT(process == 0u, "the hook must get the events of all processes");
    SIMULATION_EXPECT(thread == 0u, "the hook must get the events of all threads");
    SIMULATION_EXPECT(flags == 0u, "the events must be delivered out of context");
    if (get().journal.enter("SetWinEventHook")) {
        return nullptr;
    }
    auto& all = get().all;
    auto* const handle = reinterpret_cast<HWINEVENTHOOK>(0x40001 + all.size());
    all.push_back({handle, procedure, GetCurrentThreadId(), false});
    return handle;
}

BOOL WINAPI EventHooks::release(HWINEVENTHOOK handle) {
    const bool fails = get().journal.enter("UnhookWinEvent").has_value();
    SetLastError(errorAfterRelease);
    auto& all = get().all;
    const auto hook = std::ranges::find_if(all, [=](const auto& candidate) {
        return candidate.handle == handle && !candidate.released;
    });
    if (hook != all.end() && hook->thread != GetCurrentThreadId() && get().releasesToRefuse > 0) {
        --get().releasesToRefuse;
        return FALSE;
    }
    if (hook == all.end() || hook->thread != GetCurrentThreadId()) {
        report("a hook was released that this thread has not installed");
        return FALSE;
    }
    if (fails) {
        return FALSE;
    }
    hook->released = true;
    if (!get().journal.isRecording()) {
        all.erase(hook);
    }
    return TRUE;
}

// Counts the pinning instead of doing it: a pinned image would stay loaded in later tests.
BOOL WINAPI EventHooks::findImage(DWORD flags, LPCWSTR address, HMODULE* image) {
    if ((flags & GET_MODULE_HANDLE_EX_FLAG_PIN) != 0) {
        ++get().imagePins;
        flags = (flags & ~DWORD{GET_MODULE_HANDLE_EX_FLAG_PIN}) |
                GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT;
    }
    // Not through the program's import, which leads here when the program is redirected itself.
    using Function = decltype(&GetModuleHandleExW);
    void* const real = reinterpret_cast<void*>(
        GetProcAddress(GetModuleHandleW(L"kernel32.dll"), "GetModuleHandleExW"));
    return reinterpret_cast<Function>(real)(flags, address, image);
}

} // namespace simulation
