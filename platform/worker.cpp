#include "platform/worker.h"

#include "platform/image.h"

#include <windows.h>

#include <process.h>

#include <cerrno>
#include <exception>
#include <memory>
#include <system_error>
#include <utility>

namespace vorlen {

namespace {

struct Job {
    std::function<void()> task;
    std::exception_ptr failure;
};

// Owned by the worker thread.
struct Share {
    std::shared_ptr<Job> job;
    HMODULE image; // a reference to the image that the thread runs in
};

// Runs the task, frees the share, and returns the reference to the image, which is still held.
HMODULE run(void* parameter) {
    const std::unique_ptr<Share> share(static_cast<Share*>(parameter));
    try {
        share->job->task();
    } catch (...) {
        share->job->failure = std::current_exception();
    }
    return share->image;
}

// When the caller could not wait for the thread, the host may unload the library while the thread
// runs. The reference keeps the thread's code loaded until the thread has ended.
unsigned __stdcall runJob(void* parameter) {
    FreeLibraryAndExitThread(run(parameter), 0);
}

// Not std::thread, which leaks memory when the DLL is unloaded (docs/platform.md).
HANDLE start(const std::shared_ptr<Job>& job) {
    auto share = std::make_unique<Share>(Share{job, nullptr});
    share->image = referenceThisImage();
    auto* const thread =
        reinterpret_cast<HANDLE>(_beginthreadex(nullptr, 0, runJob, share.get(), 0, nullptr));
    if (thread == nullptr) {
        const int error = errno;
        FreeLibrary(share->image);
        throw std::system_error(error, std::generic_category());
    }
    static_cast<void>(share.release()); // the thread owns it
    return thread;
}

void join(HANDLE thread) {
    const DWORD waited = WaitForSingleObject(thread, INFINITE);
    const DWORD error = GetLastError();
    CloseHandle(thread);
    if (waited != WAIT_OBJECT_0) {
        throw std::system_error(static_cast<int>(error), std::system_category());
    }
}

} // namespace

void runOnWorker(std::function<void()> task) {
    const auto job = std::make_shared<Job>(Job{std::move(task), nullptr});
    join(start(job));
    if (job->failure) {
        std::rethrow_exception(job->failure);
    }
}

} // namespace vorlen
