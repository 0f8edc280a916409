#pragma once

#include "simulation/current.h"
#include "simulation/import_redirect.h"
#include "tests/support/simulation.h"

#include <windows.h>

#include <cstddef>
#include <vector>

namespace tests {

// Watches the threads that an image starts with _beginthreadex, and can let the wait for one fail.
// The image does so on one thread at a time.
class WorkerThreads : private Current<WorkerThreads> {
public:
    explicit WorkerThreads(HMODULE image);
    ~WorkerThreads();
    WorkerThreads(const WorkerThreads&) = delete;
    WorkerThreads& operator=(const WorkerThreads&) = delete;

    std::size_t started() const { return threads.size(); }
    std::size_t running() const;

    // The next wait for a thread fails at once with this error.
    DWORD failNextWait = ERROR_SUCCESS;

    // Returns when every thread has ended.
    void waitForAll() const;

private:
    friend class Current<WorkerThreads>;
    using Procedure = unsigned(__stdcall*)(void*);
    static std::uintptr_t __cdecl begin(void* security, unsigned stackSize, Procedure procedure,
                                        void* parameter, unsigned flags, unsigned* threadId);
    static DWORD WINAPI waitFor(HANDLE object, DWORD timeout);

    std::vector<HANDLE> threads;  // this object's own handles
    HANDLE startedLast = nullptr; // the image's handle
    ImportRedirect beginRedirect;
    ImportRedirect waitRedirect;
};

} // namespace tests
