#include "benchmark/list_rows.h"

namespace bench {

Row besideCopying(const std::string& what, double list, double copy) {
    const double slower = list / copy;
    return {what,
            "copying the same bytes",
            "<= 10 x slower",
            slower,
            "x",
            slower <= 10,
            {{"list, ns", list}, {"copy, ns", copy}}};
}

Row allocationsOfList(const std::string& what, HMODULE image, const std::function<void()>& list) {
    const std::size_t requests = allocationsOf(image, list);
    return {what, "", "no allocation", static_cast<double>(requests), "allocations", requests == 0};
}

} // namespace bench
