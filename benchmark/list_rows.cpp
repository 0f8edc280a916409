#include "benchmark/list_rows.h"

#include "benchmark/measurement.h"

namespace bench {

Row allocationsOfList(const std::string& what, HMODULE image, const std::function<void()>& list) {
    const auto requests = static_cast<double>(allocationsOf(image, list));
    return {.what = what, .value = requests, .unit = "allocations", .atMost = 0};
}

} // namespace bench
