#pragma once

#include "tests/support/allocations.h"
#include "tests/support/wine.h"

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
//
// Only Wine has accounts. It hands out the lowest handle and slot that is free, and its libraries
// take nothing in between. Windows promises neither: its libraries take and give back all three
// when they choose, also on threads of their own, such as those of the loader and of the thread
// pool, and the system does not tell which image took what. A difference there need not be a defect
// of the code under test.
class Account {
public:
    // On a system without accounts, the object counts nothing and is always settled.
    explicit Account(bool systemHasAccounts = wineVersion() != nullptr);

    // Fails the running test, once for each kind, unless the process holds as much as then. Waits
    // for that until the time is over: what a thread held is given back shortly after its end.
    void expectSettled(std::chrono::milliseconds patience = std::chrono::seconds(2)) const;

private:
    bool isSettled(const Account& now) const;
    void report(const Account& now) const;

    using Blocks = std::unordered_map<void*, std::size_t, std::hash<void*>, std::equal_to<>,
                                      ProcessHeapAllocator<std::pair<void* const, std::size_t>>>;

    static Blocks takenBlocks();

    bool counts;
    Blocks blocks;               // and their sizes
    HANDLE nextHandle = nullptr; // the system hands out the lowest that is free
    DWORD nextThreadSlot = 0;    // likewise
};

} // namespace tests
