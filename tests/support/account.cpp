#include "tests/support/account.h"

#include <gtest/gtest.h>
#include <malloc.h>

#include <chrono>
#include <cstdint>
#include <optional>
#include <sstream>
#include <stdexcept>
#include <thread>
#include <utility>

namespace tests {

namespace {

HANDLE lowestFreeHandle() {
    const HANDLE event = CreateEventW(nullptr, FALSE, FALSE, nullptr);
    if (event == nullptr) {
        throw std::runtime_error("no event can be made");
    }
    CloseHandle(event);
    return event;
}

DWORD lowestFreeThreadSlot() {
    const DWORD slot = TlsAlloc();
    if (slot == TLS_OUT_OF_INDEXES) {
        throw std::runtime_error("no slot of thread-local storage is free");
    }
    TlsFree(slot);
    return slot;
}

std::size_t blocksLeft = 0;

// Wine's heap, when it is checked, fills a block that is freed and keeps it for a while.
bool isFreed(const void* block) {
    return *static_cast<const std::uint32_t*>(block) == 0xFEEEFEEE;
}

} // namespace

void expectBlocksLeft(std::size_t count) {
    blocksLeft = count;
}

Account::Account(bool systemHasAccounts) : counts(systemHasAccounts) {
    if (counts) {
        blocks = takenBlocks();
        nextHandle = lowestFreeHandle();
        nextThreadSlot = lowestFreeThreadSlot();
    }
}

Account::Blocks Account::takenBlocks() {
    auto* const heap = reinterpret_cast<HANDLE>(_get_heap_handle());
    Blocks taken;
    PROCESS_HEAP_ENTRY entry{};
    HeapLock(heap);
    while (HeapWalk(heap, &entry) != FALSE) {
        if ((entry.wFlags & PROCESS_HEAP_ENTRY_BUSY) != 0 && !isFreed(entry.lpData)) {
            taken.emplace(entry.lpData, entry.cbData);
        }
    }
    HeapUnlock(heap);
    return taken;
}

bool Account::isSettled(const Account& now) const {
    return now.blocks.size() == blocks.size() + blocksLeft && now.nextHandle == nextHandle &&
           now.nextThreadSlot == nextThreadSlot;
}

void Account::expectSettled(std::chrono::milliseconds patience) const {
    if (!counts) {
        return;
    }
    const auto deadline = std::chrono::steady_clock::now() + patience;
    std::optional<Account> now(std::in_place, true);
    while (!isSettled(*now) && std::chrono::steady_clock::now() < deadline) {
        std::this_thread::yield();
        now.emplace(true);
    }
    report(*now);
}

void Account::report(const Account& now) const {
    if (now.blocks.size() != blocks.size() + blocksLeft) {
        std::ostringstream sizes;
        for (const auto& [block, size] : now.blocks) {
            if (!blocks.contains(block)) {
                sizes << ' ' << size;
            }
        }
        ADD_FAILURE() << now.blocks.size() << " blocks of the C library's heap are taken, "
                      << blocks.size() << " were at first, " << blocksLeft
                      << " more are expected; new are blocks of these sizes:" << sizes.str();
    }
    EXPECT_EQ(now.nextHandle, nextHandle) << "a handle was not closed, or one too many was";
    EXPECT_EQ(now.nextThreadSlot, nextThreadSlot)
        << "a slot of thread-local storage was not freed, or one too many was";
}

} // namespace tests
