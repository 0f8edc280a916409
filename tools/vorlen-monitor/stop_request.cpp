#include "tools/vorlen-monitor/stop_request.h"

#include "tools/vorlen-monitor/failure.h"

namespace vorlen::tool {

namespace {

HANDLE requested = nullptr; // event; the handler of the system's thread finds it here

// The system takes care that the process lives until the handler has returned, and no longer after
// the console was closed: the main thread is given a moment to end cleanly.
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

// The event stays: the handler may be running until the process ends.
StopRequest::~StopRequest() {
    SetConsoleCtrlHandler(onControl, FALSE);
}

bool StopRequest::waitForRequestOrMessage(DWORD milliseconds) const {
    return MsgWaitForMultipleObjects(1, &requested, FALSE, milliseconds, QS_ALLINPUT) ==
           WAIT_OBJECT_0;
}

} // namespace vorlen::tool
