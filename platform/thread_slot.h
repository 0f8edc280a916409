#pragma once

#include <windows.h>

#include <system_error>
#include <utility>

// One borrowed pointer to a T per thread, null at first. A slot of Windows' own: what toolchains
// make of thread_local stays behind in a process that unloads the library.
//
// An image has one slot for each T at a time. Its index is not part of the object: calls that
// follow the destruction, at the end of the process for example, find no index, and leave one that
// Windows has given to another owner alone.
template <typename T>
class ThreadSlot {
public:
    ThreadSlot() { index = TlsAlloc(); }
    ~ThreadSlot() { TlsFree(std::exchange(index, TLS_OUT_OF_INDEXES)); }
    ThreadSlot(const ThreadSlot&) = delete;
    ThreadSlot& operator=(const ThreadSlot&) = delete;

    static T* Get() { return static_cast<T*>(TlsGetValue(index)); }

    // Throws std::system_error when the system has no room for the pointer, or had none for the
    // slot.
    static void Set(T* value) {
        if (TlsSetValue(index, value) == FALSE) {
            throw std::system_error(static_cast<int>(GetLastError()), std::system_category());
        }
    }

    // A thread that never set its pointer has none to clear either.
    static void Clear() noexcept { TlsSetValue(index, nullptr); }

private:
    static inline DWORD index = TLS_OUT_OF_INDEXES;
};
