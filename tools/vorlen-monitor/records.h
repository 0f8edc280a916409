#pragma once

#include <array>
#include <charconv>
#include <cstdint>
#include <string>
#include <vector>

namespace vorlen::tool {

// Every record of a list function of the library, even when their number changes between calls.
template <typename Record>
std::vector<Record> readRecords(int (*getList)(Record*, std::int32_t)) {
    std::vector<Record> records;
    int count = getList(nullptr, 0);
    // The array has room for one record more than the last count. When a call fills it, there may
    // be further records.
    do {
        records.resize(static_cast<std::size_t>(count) + 1);
        count = getList(records.data(), static_cast<std::int32_t>(records.size()));
    } while (static_cast<std::size_t>(count) == records.size());
    records.resize(static_cast<std::size_t>(count));
    return records;
}

// The handle that has this number in a reading.
template <typename Handle>
Handle handleOf(std::uint64_t number) {
    return reinterpret_cast<Handle>(std::uintptr_t{number});
}

// A handle as text, such as "0x10001".
inline std::string hexadecimal(const void* handle) {
    std::array<char, 2 * sizeof handle> digits{};
    const std::to_chars_result result = std::to_chars(digits.data(), digits.data() + digits.size(),
                                                      reinterpret_cast<std::uintptr_t>(handle), 16);
    return "0x" + std::string(digits.data(), result.ptr);
}

} // namespace vorlen::tool
