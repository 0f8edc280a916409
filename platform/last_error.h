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
