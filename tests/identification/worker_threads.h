#pragma once

#include "simulation/current.h"
#include "simulation/import_redirect.h"
#include "tests/support/simulation.h"

#include <windows.h>

#include <cstddef>
#include <vector>

namespace tests {

// Watches the threads that an image starts with _beginthreadex, and can let a start or the wait for
// an end fail. The image does so on one thread at a time.
class WorkerThreads : private Current<WorkerThreads> {
public:
    explicit WorkerThreads(HMODULE image);
    ~WorkerThreads();
    WorkerThreads(const WorkerThreads&) = delete;
    WorkerThreads& operator=(const WorkerThreads&) = delete;

    std::size_t started() const { return threads.size(); }
    std::size_t running() const;

    // Handles of threads that the image has not given back.
    std::size_t unclosedHandles() const { return handles.size(); }

    // The next start fails with this value of errno.
    int failNextStart = 0;

    // The next wait for a thread fails with this error, once the thread has ended.
    DWORD failNextWait = ERROR_SUCCESS;

    // That wait fails while the thread is still running.
    bool failsAtOnce = false;

    // Returns when every thread has ended.
    void waitForAll() const;

private:
    friend class Current<WorkerThreads>;
    using Procedure = unsigned(__stdcall*)(void*);
    static std::uintptr_t __cdecl begin(void* security, unsigned stackSize, Procedure procedure,
                                        void* parameter, unsigned flags, unsigned* threadId);
    static DWORD WINAPI waitFor(HANDLE object, DWORD timeout);
    static WINBOOL WINAPI close(HANDLE object);
    bool isThread(HANDLE object) const;

    std::vector<HANDLE> threads; // this object's own handles
    std::vector<HANDLE> handles; // the image's
    ImportRedirect beginRedirect;
    ImportRedirect waitRedirect;
    ImportRedirect closeRedirect;
};

} // namespace tests
