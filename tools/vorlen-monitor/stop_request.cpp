#include "tools/vorlen-monitor/stop_request.h"

#include "tools/vorlen-monitor/failure.h"

namespace vorlen::tool {

namespace {

HANDLE requested = nullptr; // event; onControl() uses it on a thread of the system

// When the console is closed, the system ends the process as soon as this handler returns.
// Sleeping gives the main thread time to end cleanly.
BOOL WINAPI onControl(DWORD control) {
    SetEvent(requested);
    if (control != CTRL_C_EVENT && control != CTRL_BREAK_EVENT) {
        Sleep(INFINITE);
    }
    return TRUE;
}

} // namespace

StopRequest::StopRequest() {
    requested = CreateEventW(nullptr, TRUE, FALSE, nullptr);
    if (requested == nullptr || SetConsoleCtrlHandler(onControl, TRUE) == FALSE) {
        throw Failure(ExitCode::internal, "cannot handle Ctrl+C: " + systemError(GetLastError()));
    }
}

// The event is not closed: the handler may still be running.
StopRequest::~StopRequest() {
    SetConsoleCtrlHandler(onControl, FALSE);
}

bool StopRequest::waitForRequestOrMessage(DWORD milliseconds) const {
    return MsgWaitForMultipleObjects(1, &requested, FALSE, milliseconds, QS_ALLINPUT) ==
           WAIT_OBJECT_0;
}

} // namespace vorlen::tool
