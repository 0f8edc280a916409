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
    DWORD thread = 0; // that installed it, and to which its events go
    bool released = false;
};

// The window-event hooks behind SetWinEventHook and UnhookWinEvent. Events are delivered when a
// test says so: the platform would do it while the thread retrieves messages. At the end it is
// checked that every hook was released.
class EventHooks : private Current<EventHooks> {
public:
    // What UnhookWinEvent leaves as the last-error value.
    static constexpr DWORD errorAfterRelease = 0x1234;

    EventHooks(Redirects& redirects, Journal& calls);
    ~EventHooks();
    EventHooks(const EventHooks&) = delete;
    EventHooks& operator=(const EventHooks&) = delete;

    // How many hooks the test leaves installed on purpose.
    std::size_t leftInstalled = 0;

    // How many releases a test makes on another thread than that of the hook, which are refused.
    // Any more are a failure of the test.
    std::size_t releasesToRefuse = 0;

    // How often the image has asked to be kept loaded for good, which it is not.
    std::size_t imagePins = 0;

    // Hands the event to the hooks of the calling thread, in the order of their installation. Any
    // event, also one outside their range: that is checked when a hook is installed.
    void deliver(DWORD event, HWND window, LONG object = OBJID_WINDOW, LONG child = CHILDID_SELF);

    // Hooks of any thread that are not released.
    std::size_t installed() const;

    // In the order of installation, released ones included.
    std::vector<SimulatedEventHook> all;

private:
    friend class Current<EventHooks>;
    static HWINEVENTHOOK WINAPI install(DWORD firstEvent, DWORD lastEvent, HMODULE library,
                                        WINEVENTPROC procedure, DWORD process, DWORD thread,
                                        DWORD flags);
    static WINBOOL WINAPI release(HWINEVENTHOOK handle);
    static WINBOOL WINAPI findImage(DWORD flags, LPCWSTR address, HMODULE* image);

    Journal& journal;
};

} // namespace simulation
