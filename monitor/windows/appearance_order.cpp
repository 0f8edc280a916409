#include "monitor/windows/appearance_order.h"

namespace {

// The largest power of two that divides n.
std::size_t span(std::size_t n) {
    return n & (~n + 1);
}

} // namespace

void AppearanceOrder::Append() {
    const std::size_t n = counts.size() + 1;
    counts.push_back(TakenBefore(n - 1) + 1 - TakenBefore(n - span(n)));
}

void AppearanceOrder::Vacate(std::size_t place) noexcept {
    for (std::size_t n = place + 1; n <= counts.size(); n += span(n)) {
        --CountAt(n);
    }
}

void AppearanceOrder::CloseGaps() noexcept {
    counts.resize(Taken());
    for (std::size_t n = 1; n <= counts.size(); ++n) {
        CountAt(n) = span(n);
    }
}

std::size_t AppearanceOrder::TakenBefore(std::size_t place) const noexcept {
    std::size_t taken = 0;
    for (std::size_t n = place; n > 0; n -= span(n)) {
        taken += counts[n - 1];
    }
    return taken;
}
