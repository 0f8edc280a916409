#pragma once

#include <windows.h>

namespace vorlen::tool {

// Turns Ctrl+C, Ctrl+Break and the closing of the console into a request that the main thread sees,
// while the object lives. One at a time.
class StopRequest {
public:
    // Throws a Failure when the system refuses.
    StopRequest();
    ~StopRequest();
    StopRequest(const StopRequest&) = delete;
    StopRequest& operator=(const StopRequest&) = delete;

    // Waits for the request, for a message to the calling thread or for the time to pass; returns
    // whether the request has come.
    bool waitForRequestOrMessage(DWORD milliseconds) const;
};

} // namespace vorlen::tool
