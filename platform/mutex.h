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
