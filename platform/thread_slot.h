#pragma once

#include <windows.h>

#include <system_error>
#include <utility>

namespace vorlen {

// One borrowed pointer to a T per thread, null at first, in a TLS slot of Windows. libstdc++ and
// winpthreads leak a TLS slot for thread_local when the DLL is unloaded.
//
// An image has at most one slot for each T at a time. The slot's index is static: calls after the
// destruction, such as at the end of the process, see that there is no slot and do not touch a
// slot that Windows has given to another owner.
template <typename T>
class ThreadSlot {
public:
    ThreadSlot() { index = TlsAlloc(); }
    ~ThreadSlot() { TlsFree(std::exchange(index, TLS_OUT_OF_INDEXES)); }
    ThreadSlot(const ThreadSlot&) = delete;
    ThreadSlot& operator=(const ThreadSlot&) = delete;

    static T* Get() { return static_cast<T*>(TlsGetValue(index)); }

    // Throws std::system_error when the system cannot store the pointer, or could not allocate the
    // slot.
    static void Set(T* value) {
        if (TlsSetValue(index, value) == FALSE) {
            throw std::system_error(static_cast<int>(GetLastError()), std::system_category());
        }
    }

    // A failure is ignored: a thread whose pointer cannot be set has never set one.
    static void Clear() noexcept { TlsSetValue(index, nullptr); }

private:
    static inline DWORD index = TLS_OUT_OF_INDEXES;
};

} // namespace vorlen
