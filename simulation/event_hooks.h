#pragma once

#include "simulation/current.h"
#include "simulation/journal.h"
#include "simulation/redirects.h"

#include <windows.h>

#include <cstddef>
#include <vector>

namespace simulation {

struct SimulatedEventHook {
    HWINEVENTHOOK handle = nullptr;
    WINEVENTPROC procedure = nullptr;
    DWORD thread = 0; // the thread that installed it; it gets the events
    bool released = false;
};

// The window-event hooks behind SetWinEventHook and UnhookWinEvent. A test delivers the events,
// which Windows delivers while a thread retrieves messages. The destructor checks that every hook
// was released.
class EventHooks : private Current<EventHooks> {
public:
    // The last-error value that UnhookWinEvent sets.
    static constexpr DWORD errorAfterRelease = 0x1234;

    EventHooks(Redirects& redirects, Journal& calls);
    ~EventHooks();
    EventHooks(const EventHooks&) = delete;
    EventHooks& operator=(const EventHooks&) = delete;

    // The number of hooks that the test leaves installed on purpose.
    std::size_t leftInstalled = 0;

    // The number of releases on a thread other than the hook's that a test expects. They fail; any
    // further one is reported.
    std::size_t releasesToRefuse = 0;

    // How often the image was to be pinned with GetModuleHandleExW. It is not pinned.
    std::size_t imagePins = 0;

    // Calls the procedures of the calling thread's hooks with the event, in the order of their
    // installation. Also for events outside the range of a hook, which install() checks.
    void deliver(DWORD event, HWND window, LONG object = OBJID_WINDOW, LONG child = CHILDID_SELF);

    // The number of hooks, of any thread, that are not released.
    std::size_t installed() const;

    // In the order of installation. Released ones stay, unless the journal has stopped recording.
    std::vector<SimulatedEventHook> all;

private:
    friend class Current<EventHooks>;
    static HWINEVENTHOOK WINAPI install(DWORD firstEvent, DWORD lastEvent, HMODULE library,
                                        WINEVENTPROC procedure, DWORD process, DWORD thread,
                                        DWORD flags);
    static BOOL WINAPI release(HWINEVENTHOOK handle);
    static BOOL WINAPI findImage(DWORD flags, LPCWSTR address, HMODULE* image);

    Journal& journal;
};

} // namespace simulation
