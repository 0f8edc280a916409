#include "tests/identification/worker_threads.h"

#include <gtest/gtest.h>
#include <process.h>

#include <algorithm>
#include <stdexcept>
#include <utility>

namespace tests {

namespace {

HANDLE duplicate(HANDLE thread) {
    HANDLE copy = nullptr;
    if (DuplicateHandle(GetCurrentProcess(), thread, GetCurrentProcess(), &copy, 0, FALSE,
                        DUPLICATE_SAME_ACCESS) == FALSE) {
        throw std::runtime_error("the handle of a thread cannot be duplicated");
    }
    return copy;
}

bool isRunning(HANDLE thread) {
    return WaitForSingleObject(thread, 0) != WAIT_OBJECT_0;
}

} // namespace

WorkerThreads::WorkerThreads(HMODULE image)
    : beginRedirect(image, "_beginthreadex", addressOf(begin)),
      waitRedirect(image, "WaitForSingleObject", addressOf(waitFor)) {}

WorkerThreads::~WorkerThreads() {
    for (const HANDLE thread : threads) {
        CloseHandle(thread);
    }
}

std::size_t WorkerThreads::running() const {
    return static_cast<std::size_t>(std::count_if(threads.begin(), threads.end(), isRunning));
}

void WorkerThreads::waitForAll() const {
    for (const HANDLE thread : threads) {
        EXPECT_EQ(WaitForSingleObject(thread, 30'000), WAIT_OBJECT_0) << "a thread did not end";
    }
}

std::uintptr_t __cdecl WorkerThreads::begin(void* security, unsigned stackSize, Procedure procedure,
                                            void* parameter, unsigned flags, unsigned* threadId) {
    const std::uintptr_t result =
        _beginthreadex(security, stackSize, procedure, parameter, flags, threadId);
    if (result != 0) {
        get().startedLast = reinterpret_cast<HANDLE>(result);
        get().threads.push_back(duplicate(get().startedLast));
    }
    return result;
}

DWORD WINAPI WorkerThreads::waitFor(HANDLE object, DWORD timeout) {
    if (get().failNextWait == ERROR_SUCCESS || object != get().startedLast) {
        return WaitForSingleObject(object, timeout);
    }
    SetLastError(std::exchange(get().failNextWait, ERROR_SUCCESS));
    return WAIT_FAILED;
}

} // namespace tests
