#pragma once

#include "tests/support/allocations.h"

#include <windows.h>

#include <chrono>
#include <cstddef>
#include <unordered_map>

namespace tests {

// For a test that keeps memory on purpose: exactly this many blocks of the heap may be left when it
// has ended.
void expectBlocksLeft(std::size_t count);

// What the process held, when the object was made, of what code can forget to give back: blocks of
// the C library's heap, which the program and every image in it share, handles, and slots of
// thread-local storage.
class Account {
public:
    Account();

    // Fails the running test, once for each kind, unless the process holds as much as then. Waits
    // for that until the time is over: what a thread held is given back shortly after its end.
    void expectSettled(std::chrono::milliseconds patience = std::chrono::seconds(2)) const;

private:
    bool isSettled(const Account& now) const;
    void report(const Account& now) const;

    using Blocks = std::unordered_map<void*, std::size_t, std::hash<void*>, std::equal_to<>,
                                      ProcessHeapAllocator<std::pair<void* const, std::size_t>>>;

    static Blocks takenBlocks();

    Blocks blocks;        // and their sizes
    HANDLE nextHandle;    // the system hands out the lowest that is free
    DWORD nextThreadSlot; // likewise
};

} // namespace tests
