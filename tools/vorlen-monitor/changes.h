#pragma once

#include <algorithm>
#include <string>
#include <vector>

namespace vorlen::tool {

enum class Change { appeared, changed, gone };

// Hands every difference between two lists to the visitor, as visit(Change, record): what has gone
// first, then what changed and what appeared, in the list's order. Records are the same thing when
// their handles are equal, and unchanged when equal(before, now) says so.
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
