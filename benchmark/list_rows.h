#pragma once

#include "benchmark/report.h"

#include <windows.h>

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace bench {

// The records of a list export.
template <typename Item>
class Records {
public:
    explicit Records(int (*exportedFunction)(Item*, std::int32_t))
        : getList(exportedFunction), items(static_cast<std::size_t>(getList(nullptr, 0))) {}

    std::size_t count() const { return items.size(); }

    void list() { getList(items.data(), static_cast<std::int32_t>(items.size())); }

private:
    int (*getList)(Item*, std::int32_t);
    std::vector<Item> items;
};

// The row with the number of allocations of the image while it lists.
Row allocationsOfList(const std::string& what, HMODULE image, const std::function<void()>& list);

} // namespace bench
