#pragma once

#include "tests/acceptance/facts/window_thread.h"

#include <windows.h>

#include <string>
#include <vector>

namespace tests {

struct RecordedEvent {
    HWINEVENTHOOK hook;
    DWORD event;
    HWND window;
    LONG object;
    LONG child;
    DWORD windowThread; // the thread that the event names
    DWORD calledThread; // the thread on which the procedure was called
};

// A hook with the range and the flags of the library's, which belongs to the thread that makes the
// object and must be used on it.
class EventRecorder {
public:
    EventRecorder();
    ~EventRecorder() { release(); }
    EventRecorder(const EventRecorder&) = delete;
    EventRecorder& operator=(const EventRecorder&) = delete;

    // Retrieves messages until an event has arrived that the thread announces now, about a window
    // of it. False when it has not arrived within a minute.
    bool receiveAll(const WindowThread& thread, HWND window) const;

    // Forgets the events of all recorders of this thread.
    static void forget() { all.clear(); }

    // The events of this hook about the window in the order of their arrival, without those of
    // receiveAll.
    std::vector<RecordedEvent> about(HWND window) const;

    // Those that show, hide, cloak, uncloak or destroy something, such as "HIDE window, DESTROY
    // caret"; "no event" when there is none.
    std::string answerAbout(HWND window) const;

    // The names of all of them.
    std::string detailAbout(HWND window) const;

    HWINEVENTHOOK handle() const { return hook; }
    void release() const { UnhookWinEvent(hook); }

private:
    static void CALLBACK record(HWINEVENTHOOK hook, DWORD event, HWND window, LONG object,
                                LONG child, DWORD thread, DWORD time);

    static thread_local std::vector<RecordedEvent> all;

    HWINEVENTHOOK hook;
};

// Announces an event about a window of the calling thread.
void announce(DWORD event, HWND window, LONG child = CHILDID_SELF);

} // namespace tests
