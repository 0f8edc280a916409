#include "benchmark/list_rows.h"

namespace bench {

Row besideCopying(const std::string& what, double list, double copy) {
    return within("", 10, " slower", what, "copying the same bytes", list / copy,
                  {{"list, ns", list}, {"copy, ns", copy}});
}

Row allocationsOfList(const std::string& what, HMODULE image, const std::function<void()>& list) {
    const std::size_t requests = allocationsOf(image, list);
    return {what, "", "no allocation", static_cast<double>(requests), "allocations", requests == 0};
}

} // namespace bench
