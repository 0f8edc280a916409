#include "monitor/platform/worker.h"

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

unsigned __stdcall runJob(void* parameter) {
    const std::unique_ptr<std::shared_ptr<Job>> job(static_cast<std::shared_ptr<Job>*>(parameter));
    try {
        (*job)->task();
    } catch (...) {
        (*job)->failure = std::current_exception();
    }
    return 0;
}

// Not std::thread: what toolchains make of it stays behind in a process that unloads the library.
HANDLE start(const std::shared_ptr<Job>& job) {
    auto share = std::make_unique<std::shared_ptr<Job>>(job);
    auto* const thread =
        reinterpret_cast<HANDLE>(_beginthreadex(nullptr, 0, runJob, share.get(), 0, nullptr));
    if (thread == nullptr) {
        throw std::system_error(errno, std::generic_category());
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
