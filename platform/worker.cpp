#include "platform/worker.h"

#include "platform/image.h"

#include <windows.h>

#include <process.h>

#include <cerrno>
#include <exception>
#include <memory>
#include <system_error>
#include <utility>

namespace {

struct Job {
    std::function<void()> task;
    std::exception_ptr failure;
};

// What the thread owns.
struct Share {
    std::shared_ptr<Job> job;
    HMODULE image; // a reference to the image that the thread runs in
};

// Frees the share but for its reference, which it returns.
HMODULE run(void* parameter) {
    const std::unique_ptr<Share> share(static_cast<Share*>(parameter));
    try {
        share->job->task();
    } catch (...) {
        share->job->failure = std::current_exception();
    }
    return share->image;
}

// The host may unload the library when the thread could not be waited for: the thread's code stays
// until the thread has left it.
unsigned __stdcall runJob(void* parameter) {
    FreeLibraryAndExitThread(run(parameter), 0);
}

// Not std::thread: what toolchains make of it stays behind in a process that unloads the library.
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
    static_cast<void>(share.release()); // now the thread's
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
