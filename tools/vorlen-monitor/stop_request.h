#pragma once

#include <windows.h>

namespace vorlen::tool {

// While the object lives, Ctrl+C, Ctrl+Break and the closing of the console do not end the process
// but set a request to stop. At most one object at a time.
class StopRequest {
public:
    // Throws a Failure when the system cannot install the handler.
    StopRequest();
    ~StopRequest();
    StopRequest(const StopRequest&) = delete;
    StopRequest& operator=(const StopRequest&) = delete;

    // Waits until the request is set, a message to the calling thread arrives, or the time has
    // passed. Returns whether the request is set.
    bool waitForRequestOrMessage(DWORD milliseconds) const;
};

} // namespace vorlen::tool
