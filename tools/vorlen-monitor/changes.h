#pragma once

#include <algorithm>
#include <string>
#include <vector>

namespace vorlen::tool {

enum class Change { appeared, changed, gone };

// Calls visit(Change, record) for every difference between two lists: first for records that are
// gone, then for records that changed or appeared, each in their list's order. Two records
// describe the same monitor or window when their handles are equal; it has changed when
// equal(before, now) is false.
template <typename Record, typename Equal, typename Visit>
void visitChanges(const std::vector<Record>& before, const std::vector<Record>& now, Equal equal,
                  Visit visit) {
    const auto find = [](const std::vector<Record>& records, const Record& wanted) {
        return std::ranges::find_if(
            records, [&](const Record& record) { return record.handle == wanted.handle; });
    };
    for (const Record& record : before) {
        if (find(now, record) == now.end()) {
            visit(Change::gone, record);
        }
    }
    for (const Record& record : now) {
        const auto earlier = find(before, record);
        if (earlier == before.end()) {
            visit(Change::appeared, record);
        } else if (!equal(*earlier, record)) {
            visit(Change::changed, record);
        }
    }
}

} // namespace vorlen::tool
