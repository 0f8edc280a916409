#pragma once

#include <windows.h>

// Restores the thread's last-error value at its end.
class LastErrorKeeper {
public:
    LastErrorKeeper() : lastError(GetLastError()) {}
    ~LastErrorKeeper() { SetLastError(lastError); }
    LastErrorKeeper(const LastErrorKeeper&) = delete;
    LastErrorKeeper& operator=(const LastErrorKeeper&) = delete;

private:
    DWORD lastError;
};

// Sets a flag, which must be clear, until its own end.
class ScopedFlag {
public:
    explicit ScopedFlag(bool& marked) : flag(marked) { marked = true; }
    ~ScopedFlag() { flag = false; }
    ScopedFlag(const ScopedFlag&) = delete;
    ScopedFlag& operator=(const ScopedFlag&) = delete;

private:
    bool& flag;
};
