#pragma once

#include <cstdint>
#include <limits>

namespace tests {

// The smallest and the largest count or index that a host can pass.
constexpr auto smallest = std::numeric_limits<std::int32_t>::min();
constexpr auto largest = std::numeric_limits<std::int32_t>::max();

} // namespace tests
