#pragma once

#include "benchmark/measurement.h"
#include "benchmark/report.h"

#include <windows.h>

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <functional>
#include <string>
#include <vector>

namespace bench {

// The records of a list export. Copying their bytes is the lower bound for its time.
template <typename Item>
class Records {
public:
    explicit Records(int (*exportedFunction)(Item*, std::int32_t))
        : getList(exportedFunction), items(static_cast<std::size_t>(getList(nullptr, 0))),
          copies(items.size()) {
        list();
    }

    std::size_t count() const { return items.size(); }

    void list() { getList(items.data(), static_cast<std::int32_t>(items.size())); }

    void copy() {
        std::memcpy(copies.data(), items.data(), items.size() * sizeof(Item));
        use(copies.data());
    }

private:
    int (*getList)(Item*, std::int32_t);
    std::vector<Item> items;
    std::vector<Item> copies;
};

// The row that compares the time of a list with that of copying its bytes.
Row besideCopying(const std::string& what, double list, double copy);

// The row with the number of allocations of the image while it lists.
Row allocationsOfList(const std::string& what, HMODULE image, const std::function<void()>& list);

} // namespace bench
