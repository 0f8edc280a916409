#pragma once

#include <windows.h>

namespace vorlen {

// The destructor restores the last-error value that the thread had at the construction.
class LastErrorKeeper {
public:
    LastErrorKeeper() : lastError(GetLastError()) {}
    ~LastErrorKeeper() { SetLastError(lastError); }
    LastErrorKeeper(const LastErrorKeeper&) = delete;
    LastErrorKeeper& operator=(const LastErrorKeeper&) = delete;

private:
    DWORD lastError;
};

// Sets a flag, which must be clear. The destructor clears it.
class ScopedFlag {
public:
    explicit ScopedFlag(bool& marked) : flag(marked) { marked = true; }
    ~ScopedFlag() { flag = false; }
    ScopedFlag(const ScopedFlag&) = delete;
    ScopedFlag& operator=(const ScopedFlag&) = delete;

private:
    bool& flag;
};

} // namespace vorlen
