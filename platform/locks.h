#pragma once

#include <windows.h>

namespace vorlen {

// A mutex for std::lock_guard. A static std::mutex of this toolchain leaks memory when the DLL is
// unloaded (docs/platform.md); an SRWLOCK needs no memory.
class Mutex {
public:
    void lock() { AcquireSRWLockExclusive(&handle); }
    void unlock() { ReleaseSRWLockExclusive(&handle); }

private:
    SRWLOCK handle{}; // zeros are the unlocked state
};

// A lock that may be used until the process has ended. Windows ends all other threads before it
// notifies the libraries of the end of the process. If such a thread held a std::mutex, a library
// that locks it during the notification would wait for ever. EnterCriticalSection does not wait
// then.
class CriticalSection {
public:
    CriticalSection() { InitializeCriticalSectionEx(&section, 0, CRITICAL_SECTION_NO_DEBUG_INFO); }
    ~CriticalSection() { DeleteCriticalSection(&section); }
    CriticalSection(const CriticalSection&) = delete;
    CriticalSection& operator=(const CriticalSection&) = delete;

    void lock() { EnterCriticalSection(&section); }
    void unlock() { LeaveCriticalSection(&section); }

private:
    CRITICAL_SECTION section{};
};

} // namespace vorlen
