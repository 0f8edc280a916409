#pragma once

#include <windows.h>

#include <system_error>

// One borrowed pointer per thread, null at first. A slot of Windows' own: what toolchains make of
// thread_local stays behind in a process that unloads the library.
template <typename T>
class ThreadSlot {
public:
    ThreadSlot() : index(TlsAlloc()) {}
    ~ThreadSlot() { TlsFree(index); }
    ThreadSlot(const ThreadSlot&) = delete;
    ThreadSlot& operator=(const ThreadSlot&) = delete;

    T* Get() const { return static_cast<T*>(TlsGetValue(index)); }

    // Throws std::system_error when the system has no room for the pointer, or had none for the
    // slot.
    void Set(T* value) {
        if (TlsSetValue(index, value) == FALSE) {
            throw std::system_error(static_cast<int>(GetLastError()), std::system_category());
        }
    }

    // A thread that never set its pointer has none to clear either.
    void Clear() noexcept { TlsSetValue(index, nullptr); }

private:
    DWORD index;
};
