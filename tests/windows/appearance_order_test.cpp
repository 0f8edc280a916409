#include "monitor/windows/appearance_order.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <vector>

namespace tests {
namespace {

// The order, and beside it a plain list of which places are taken.
class Order : public testing::Test {
protected:
    void append() {
        order.Append();
        taken.push_back(true);
    }

    void vacate(std::size_t place) {
        order.Vacate(place);
        taken[place] = false;
    }

    void closeGaps() {
        order.CloseGaps();
        std::erase(taken, false);
    }

    void expectCounts() const {
        std::size_t before = 0;
        for (std::size_t place = 0; place < taken.size(); ++place) {
            ASSERT_EQ(order.TakenBefore(place), before) << "place " << place;
            before += taken[place] ? 1U : 0U;
        }
        ASSERT_EQ(order.Taken(), before);
    }

    AppearanceOrder order;
    std::vector<bool> taken;
};

TEST_F(Order, is_empty_at_first) {
    EXPECT_EQ(order.Taken(), 0u);
    order.CloseGaps();
    EXPECT_EQ(order.Taken(), 0u);
}

TEST_F(Order, counts_the_places_in_front_of_one) {
    for (int i = 0; i < 130; ++i) {
        append();
        expectCounts();
    }
}

TEST_F(Order, does_not_count_vacated_places) {
    for (int i = 0; i < 70; ++i) {
        append();
    }
    for (const std::size_t place : {0U, 69U, 31U, 32U, 33U, 1U, 64U}) {
        vacate(place);
        expectCounts();
    }
}

TEST_F(Order, numbers_the_taken_places_anew_when_gaps_are_closed) {
    for (int i = 0; i < 9; ++i) {
        append();
    }
    vacate(0);
    vacate(5);
    closeGaps();
    EXPECT_EQ(order.Taken(), 7u);
    expectCounts();
    append();
    expectCounts();
}

TEST_F(Order, is_that_of_a_plain_list_whatever_happens) {
    std::mt19937 random(2026);
    const auto below = [&](std::size_t limit) {
        return std::uniform_int_distribution<std::size_t>(0, limit - 1)(random);
    };
    for (int step = 0; step < 2'000; ++step) {
        const std::size_t action = below(100);
        if (action < 55 || taken.empty()) {
            append();
        } else if (action < 98) {
            const std::size_t place = below(taken.size());
            if (taken[place]) {
                vacate(place);
            }
        } else {
            closeGaps();
        }
        expectCounts();
    }
}

} // namespace
} // namespace tests
