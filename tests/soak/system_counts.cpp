#include "tests/soak/system_counts.h"

#include <windows.h>

#include <malloc.h>
#include <psapi.h>
#include <tlhelp32.h>

#include <array>
#include <cstddef>

namespace tests {

namespace {

struct HeapUse {
    std::int64_t blocks = 0;
    std::int64_t bytes = 0;
};

HeapUse useOf(HANDLE heap) {
    HeapUse use;
    HeapLock(heap);
    PROCESS_HEAP_ENTRY entry{};
    while (HeapWalk(heap, &entry) != FALSE) {
        if ((entry.wFlags & PROCESS_HEAP_ENTRY_BUSY) != 0) {
            ++use.blocks;
            use.bytes += entry.cbData;
        }
    }
    HeapUnlock(heap);
    return use;
}

HANDLE cHeap() {
    return reinterpret_cast<HANDLE>(_get_heap_handle());
}

// How many slots of so many can no longer be had.
template <std::size_t limit, typename Take, typename Give>
std::int64_t countTaken(Take take, Give give) {
    std::array<DWORD, limit> slots{};
    std::size_t free = 0;
    while (free < limit) {
        const DWORD slot = take();
        if (slot == TLS_OUT_OF_INDEXES) {
            break;
        }
        slots[free++] = slot;
    }
    for (std::size_t i = 0; i < free; ++i) {
        give(slots[i]);
    }
    return static_cast<std::int64_t>(limit - free);
}

} // namespace

std::int64_t cHeapBlocks() {
    return useOf(cHeap()).blocks;
}

std::int64_t cHeapBytes() {
    return useOf(cHeap()).bytes;
}

std::int64_t processHeapBlocks() {
    return useOf(GetProcessHeap()).blocks;
}

std::int64_t processHeapBytes() {
    return useOf(GetProcessHeap()).bytes;
}

std::int64_t committedPrivateMemory() {
    std::int64_t bytes = 0;
    MEMORY_BASIC_INFORMATION region{};
    const std::byte* address = nullptr;
    while (VirtualQuery(address, &region, sizeof(region)) != 0) {
        if (region.State == MEM_COMMIT && region.Type == MEM_PRIVATE) {
            bytes += static_cast<std::int64_t>(region.RegionSize);
        }
        address = static_cast<const std::byte*>(region.BaseAddress) + region.RegionSize;
    }
    return bytes;
}

std::int64_t validHandles() {
    constexpr int longGap = 1'000; // numbers are given out from below
    std::int64_t count = 0;
    int gap = 0;
    for (std::intptr_t handle = 4; gap < longGap; handle += 4) {
        DWORD flags = 0;
        const bool valid = GetHandleInformation(reinterpret_cast<HANDLE>(handle), &flags) != FALSE;
        count += valid ? 1 : 0;
        gap = valid ? 0 : gap + 1;
    }
    return count;
}

std::int64_t systemHandleCount() {
    DWORD count = 0;
    return GetProcessHandleCount(GetCurrentProcess(), &count) != FALSE ? count : 0;
}

std::int64_t nextUserObject() {
    const HMENU menu = CreateMenu();
    DestroyMenu(menu);
    return LOWORD(reinterpret_cast<std::uintptr_t>(menu));
}

std::int64_t systemUserObjectCount() {
    return GetGuiResources(GetCurrentProcess(), GR_USEROBJECTS);
}

std::int64_t takenThreadSlots() {
    return countTaken<2'048>(TlsAlloc, TlsFree);
}

std::int64_t takenFiberSlots() {
    return countTaken<8'192>([] { return FlsAlloc(nullptr); }, FlsFree);
}

std::int64_t threadCount() {
    const HANDLE snapshot = CreateToolhelp32Snapshot(TH32CS_SNAPTHREAD, 0);
    THREADENTRY32 thread{};
    thread.dwSize = sizeof(thread);
    std::int64_t count = 0;
    for (BOOL found = Thread32First(snapshot, &thread); found != FALSE;
         found = Thread32Next(snapshot, &thread)) {
        if (thread.th32OwnerProcessID == GetCurrentProcessId()) {
            ++count;
        }
    }
    CloseHandle(snapshot);
    return count;
}

std::int64_t loadedImages() {
    DWORD bytes = 0;
    EnumProcessModules(GetCurrentProcess(), nullptr, 0, &bytes);
    return static_cast<std::int64_t>(bytes / sizeof(HMODULE));
}

} // namespace tests
