#pragma once

#include "simulation/current.h"
#include "simulation/import_redirect.h"
#include "tests/support/simulation.h"

#include <windows.h>

#include <cstddef>
#include <deque>
#include <functional>
#include <initializer_list>
#include <limits>
#include <new>
#include <unordered_map>
#include <utility>

namespace tests {

// Takes memory from the process heap: that of the C library is being watched.
template <typename T>
struct ProcessHeapAllocator {
    using value_type = T;

    ProcessHeapAllocator() = default;
    template <typename U>
    explicit ProcessHeapAllocator(const ProcessHeapAllocator<U>&) {}

    T* allocate(std::size_t count) {
        void* const block = HeapAlloc(GetProcessHeap(), 0, count * sizeof(T));
        if (block == nullptr) {
            throw std::bad_alloc();
        }
        return static_cast<T*>(block);
    }
    void deallocate(T* block, std::size_t) { HeapFree(GetProcessHeap(), 0, block); }
    friend bool operator==(const ProcessHeapAllocator&, const ProcessHeapAllocator&) = default;
};

// Counts what images take from the C library's heap while the object lives, and can let one
// request find the heap exhausted. Operators new and delete of a statically linked C++ library are
// covered, since they call malloc and free through the same import table.
//
// Several images that hand memory to each other are watched as one; the test program may be one of
// them. Only one object at a time.
class Allocations : private Current<Allocations> {
public:
    explicit Allocations(std::initializer_list<HMODULE> images);

    // Requests so far: malloc, calloc and realloc.
    std::size_t requests() const;

    // Blocks that were taken since the object was made and not given back yet.
    std::size_t outstanding() const;

    // The sum of their sizes as they were asked for.
    std::size_t outstandingBytes() const;

    // Lets the n-th request from now on (1 is the next one) fail; 0 lets none fail.
    void failRequest(std::size_t n);

    // Lets every request for so many bytes or more fail from now on.
    void failRequestsFor(std::size_t bytes);

    // Whether a request that was chosen to fail has been made.
    bool hasFailed() const;

    // How many bytes the last of them asked for.
    std::size_t failedBytes() const;

private:
    friend class Current<Allocations>;
    static void* fakeMalloc(std::size_t size);
    static void* fakeCalloc(std::size_t count, std::size_t size);
    static void* fakeRealloc(void* block, std::size_t size);
    static void fakeFree(void* block);
    bool admit(std::size_t size);
    void* taken(void* block, std::size_t size);
    void given(void* block);

    template <typename Function>
    void redirect(HMODULE image, const char* name, Function* replacement, Function*& original);

    // The C library's functions: the table of the test program may be redirected itself.
    void* (*realMalloc)(std::size_t) = nullptr;
    void* (*realCalloc)(std::size_t, std::size_t) = nullptr;
    void* (*realRealloc)(void*, std::size_t) = nullptr;
    void (*realFree)(void*) = nullptr;

    mutable SRWLOCK lock{}; // takes no memory, unlike std::mutex
    std::size_t requestCount = 0;
    std::size_t untilFailure = 0;
    std::size_t bytesToRefuse = std::numeric_limits<std::size_t>::max();
    bool failed = false;
    std::size_t failedSize = 0;
    std::unordered_map<void*, std::size_t, std::hash<void*>, std::equal_to<>,
                       ProcessHeapAllocator<std::pair<void* const, std::size_t>>>
        blocks; // and their sizes
    std::deque<ImportRedirect> redirects;
};

} // namespace tests
