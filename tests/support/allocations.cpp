#include "tests/support/allocations.h"

#include <cerrno>
#include <numeric>

namespace tests {

namespace {

class Locked {
public:
    explicit Locked(SRWLOCK& heldLock) : lock(heldLock) { AcquireSRWLockExclusive(&lock); }
    ~Locked() { ReleaseSRWLockExclusive(&lock); }
    Locked(const Locked&) = delete;
    Locked& operator=(const Locked&) = delete;

private:
    SRWLOCK& lock;
};

} // namespace

template <typename Function>
void Allocations::redirect(HMODULE image, const char* name, Function* replacement,
                           Function*& original) {
    // Before the table changes: what it takes itself is served by this object already.
    original = reinterpret_cast<Function*>(importedFunction(image, name));
    redirects.emplace_back(image, name, addressOf(replacement));
}

Allocations::Allocations(std::initializer_list<HMODULE> images) {
    for (const HMODULE image : images) {
        redirect(image, "malloc", fakeMalloc, realMalloc);
        redirect(image, "calloc", fakeCalloc, realCalloc);
        redirect(image, "realloc", fakeRealloc, realRealloc);
        redirect(image, "free", fakeFree, realFree);
    }
    // What this object itself took, should the image be its own.
    requestCount = 0;
    blocks.clear();
}

std::size_t Allocations::requests() const {
    const Locked locked(lock);
    return requestCount;
}

std::size_t Allocations::outstanding() const {
    const Locked locked(lock);
    return blocks.size();
}

void Allocations::failRequest(std::size_t n) {
    const Locked locked(lock);
    untilFailure = n;
    failed = false;
}

std::size_t Allocations::outstandingBytes() const {
    const Locked locked(lock);
    return std::accumulate(blocks.begin(), blocks.end(), std::size_t{0},
                           [](std::size_t sum, const auto& block) { return sum + block.second; });
}

void Allocations::failRequestsFor(std::size_t bytes) {
    const Locked locked(lock);
    bytesToRefuse = bytes;
    failed = false;
}

bool Allocations::hasFailed() const {
    const Locked locked(lock);
    return failed;
}

std::size_t Allocations::failedBytes() const {
    const Locked locked(lock);
    return failedSize;
}

bool Allocations::admit(std::size_t size) {
    const Locked locked(lock);
    ++requestCount;
    const bool isNext = untilFailure != 0 && --untilFailure == 0;
    if (!isNext && size < bytesToRefuse) {
        return true;
    }
    failed = true;
    failedSize = size;
    errno = ENOMEM;
    return false;
}

void* Allocations::taken(void* block, std::size_t size) {
    const Locked locked(lock);
    if (block != nullptr) {
        blocks.emplace(block, size);
    }
    return block;
}

void Allocations::given(void* block) {
    const Locked locked(lock);
    blocks.erase(block);
}

void* Allocations::fakeMalloc(std::size_t size) {
    return get().admit(size) ? get().taken(get().realMalloc(size), size) : nullptr;
}

void* Allocations::fakeCalloc(std::size_t count, std::size_t size) {
    return get().admit(count * size) ? get().taken(get().realCalloc(count, size), count * size)
                                     : nullptr;
}

void* Allocations::fakeRealloc(void* block, std::size_t size) {
    if (!get().admit(size)) {
        return nullptr;
    }
    // Nothing may look at the old address once it has been handed over.
    get().given(block);
    void* const moved = get().realRealloc(block, size);
    return get().taken(moved, size);
}

void Allocations::fakeFree(void* block) {
    get().given(block);
    get().realFree(block);
}

} // namespace tests
