#pragma once

#include <windows.h>

// A mutex for std::lock_guard. Windows' own lock, which needs no memory: what toolchains make of a
// static std::mutex stays behind in a process that unloads the library.
class Mutex {
public:
    void lock() { AcquireSRWLockExclusive(&handle); }
    void unlock() { ReleaseSRWLockExclusive(&handle); }

private:
    SRWLOCK handle{}; // zeros are the unlocked state
};

namespace vorlen {

// A lock for what may be used until the very end of the process. The system ends every other thread
// before it tells the libraries that the process ends. Where one of those threads held the lock, a
// library that wants it then would wait for ever with std::mutex; with a critical section the
// system sees to it that it does not.
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
