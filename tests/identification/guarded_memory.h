#pragma once

#include <windows.h>

#include <cstddef>
#include <cstring>
#include <new>

namespace tests {

// Memory with nothing behind its end: one byte too far is an access violation.
class GuardedMemory {
public:
    GuardedMemory(const void* bytes, std::size_t size) {
        if (size > pageSize) {
            throw std::bad_alloc();
        }
        pages = static_cast<std::byte*>(
            VirtualAlloc(nullptr, 2 * pageSize, MEM_RESERVE, PAGE_NOACCESS));
        if (pages == nullptr ||
            VirtualAlloc(pages, pageSize, MEM_COMMIT, PAGE_READWRITE) == nullptr) {
            throw std::bad_alloc();
        }
        start = pages + pageSize - size;
        std::memcpy(start, bytes, size);
    }
    ~GuardedMemory() { VirtualFree(pages, 0, MEM_RELEASE); }
    GuardedMemory(const GuardedMemory&) = delete;
    GuardedMemory& operator=(const GuardedMemory&) = delete;

    std::byte* data() const { return start; }

private:
    static constexpr std::size_t pageSize = 4096;

    std::byte* pages = nullptr;
    std::byte* start = nullptr;
};

} // namespace tests
