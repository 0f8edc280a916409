#pragma once

#include "tests/support/allocations.h"

#include <windows.h>

#include <chrono>
#include <cstddef>
#include <unordered_map>

namespace tests {

// For a test that leaves something taken on purpose: this many blocks of the heap, and no others,
// stay when it has ended.
void expectBlocksLeft(std::size_t count);

// What the process held of the things that code can forget to give back, at the moment at which the
// object was made: blocks of the C library's heap, which the program and every image in it share,
// handles, and slots of thread-local storage.
class Account {
public:
    Account();

    // Fails the running test, once for each kind, unless the process holds as much as then, or does
    // so before the time is over: what watches the end of a thread gives back its own a little
    // later.
    void expectSettled(std::chrono::milliseconds patience = std::chrono::seconds(2)) const;

private:
    bool isSettled(const Account& now) const;
    void report(const Account& now) const;

    using Blocks = std::unordered_map<void*, std::size_t, std::hash<void*>, std::equal_to<>,
                                      ProcessHeapAllocator<std::pair<void* const, std::size_t>>>;

    static Blocks takenBlocks();

    Blocks blocks;        // and their sizes
    HANDLE nextHandle;    // the system hands out the lowest that is free
    DWORD nextThreadSlot; // so it does with these
};

} // namespace tests
