#pragma once

#include <cstdint>

namespace tests {

// What this process holds, of one kind each. A count that the system does not keep is 0.

std::int64_t cHeapBlocks();
std::int64_t cHeapBytes();
std::int64_t processHeapBlocks();
std::int64_t processHeapBytes();
std::int64_t committedPrivateMemory();
std::int64_t validHandles();
std::int64_t systemHandleCount();
std::int64_t nextUserObject(); // the number that the next window, menu or hook gets
std::int64_t systemUserObjectCount();
std::int64_t takenThreadSlots();
std::int64_t takenFiberSlots();
std::int64_t threadCount();
std::int64_t loadedImages();

} // namespace tests
