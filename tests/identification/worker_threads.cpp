#include "tests/identification/worker_threads.h"

#include <gtest/gtest.h>
#include <process.h>

#include <algorithm>
#include <cerrno>
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

bool hasEnded(HANDLE thread) {
    return WaitForSingleObject(thread, 0) == WAIT_OBJECT_0;
}

} // namespace

WorkerThreads::WorkerThreads(HMODULE image)
    : beginRedirect(image, "_beginthreadex", addressOf(begin)),
      waitRedirect(image, "WaitForSingleObject", addressOf(waitFor)),
      closeRedirect(image, "CloseHandle", addressOf(close)) {}

WorkerThreads::~WorkerThreads() {
    for (const HANDLE thread : threads) {
        CloseHandle(thread);
    }
}

std::size_t WorkerThreads::running() const {
    return threads.size() -
           static_cast<std::size_t>(std::count_if(threads.begin(), threads.end(), hasEnded));
}

void WorkerThreads::waitForAll() const {
    for (const HANDLE thread : threads) {
        EXPECT_EQ(WaitForSingleObject(thread, 30'000), WAIT_OBJECT_0) << "a thread did not end";
    }
}

bool WorkerThreads::isThread(HANDLE object) const {
    return std::find(handles.begin(), handles.end(), object) != handles.end();
}

std::uintptr_t __cdecl WorkerThreads::begin(void* security, unsigned stackSize, Procedure procedure,
                                            void* parameter, unsigned flags, unsigned* threadId) {
    if (get().failNextStart != 0) {
        errno = std::exchange(get().failNextStart, 0);
        return 0;
    }
    const std::uintptr_t result =
        _beginthreadex(security, stackSize, procedure, parameter, flags, threadId);
    if (result != 0) {
        get().handles.push_back(reinterpret_cast<HANDLE>(result));
        get().threads.push_back(duplicate(get().handles.back()));
    }
    return result;
}

DWORD WINAPI WorkerThreads::waitFor(HANDLE object, DWORD timeout) {
    const bool fails = get().failNextWait != ERROR_SUCCESS && get().isThread(object);
    const DWORD result = WaitForSingleObject(object, fails && get().failsAtOnce ? 0 : timeout);
    if (!fails) {
        return result;
    }
    SetLastError(std::exchange(get().failNextWait, ERROR_SUCCESS));
    return WAIT_FAILED;
}

WINBOOL WINAPI WorkerThreads::close(HANDLE object) {
    std::erase(get().handles, object);
    return CloseHandle(object);
}

} // namespace tests
