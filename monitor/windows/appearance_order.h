#pragma once

#include <cstddef>
#include <vector>

// Places in order of appearance, counted from 0, some of which have been vacated. Tells in
// logarithmic time how many places in front of one are still taken.
class AppearanceOrder {
public:
    // A taken place behind the others. A failure changes nothing.
    void Append();

    // The place must be taken.
    void Vacate(std::size_t place) noexcept;

    // Forgets the vacated places: all that are left are taken, and numbered anew.
    void CloseGaps() noexcept;

    std::size_t TakenBefore(std::size_t place) const noexcept;
    std::size_t Taken() const noexcept { return TakenBefore(counts.size()); }

private:
    // A binary indexed tree: the count at n, from 1, is of the taken ones among the span(n) places
    // that end with the n-th.
    std::size_t& CountAt(std::size_t n) noexcept { return counts[n - 1]; }

    std::vector<std::size_t> counts;
};
