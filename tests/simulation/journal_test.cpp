#include "simulation/journal.h"
#include "tests/support/simulation.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <stdexcept>

namespace tests {
namespace {

using testing::ElementsAre;

TEST(Journal, keeps_the_order_of_the_calls_and_counts_them_by_name) {
    Journal journal;
    journal.enter("a");
    journal.enter("b");
    journal.enter("a");
    EXPECT_THAT(journal.calls(), ElementsAre("a", "b", "a"));
    EXPECT_THAT(journal.calls({"a"}), ElementsAre("a", "a"));
    EXPECT_EQ(journal.count("a"), 2u);
    EXPECT_EQ(journal.count("c"), 0u);
}

TEST(Journal, lets_the_nth_call_from_now_fail) {
    Journal journal;
    journal.enter("a");
    journal.fail("a", 2, 87);
    EXPECT_EQ(journal.enter("a"), std::nullopt);
    EXPECT_EQ(journal.enter("b"), std::nullopt);
    EXPECT_EQ(journal.enter("a"), 87);
    EXPECT_EQ(journal.enter("a"), std::nullopt);
}

TEST(Journal, lets_every_call_fail) {
    Journal journal;
    journal.failAll("a", 5);
    EXPECT_EQ(journal.enter("a"), 5);
    EXPECT_EQ(journal.enter("a"), 5);
    EXPECT_EQ(journal.enter("b"), std::nullopt);
}

TEST(Journal, runs_an_action_at_the_nth_call_and_lets_it_throw) {
    Journal journal;
    journal.at("a", 2, [] { throw std::runtime_error("planned"); });
    EXPECT_NO_THROW(journal.enter("a"));
    EXPECT_THROW(journal.enter("a"), std::runtime_error);
    EXPECT_NO_THROW(journal.enter("a"));
    EXPECT_EQ(journal.count("a"), 3u);
}

TEST(Journal, forgets_past_calls_and_keeps_plans_when_cleared) {
    Journal journal;
    journal.fail("a", 2);
    journal.enter("a");
    journal.clear();
    EXPECT_EQ(journal.count("a"), 0u);
    EXPECT_TRUE(journal.enter("a").has_value());
}

TEST(Journal, keeps_plans_and_past_calls_when_it_stops_recording) {
    Journal journal;
    journal.enter("a");
    journal.fail("a", 2, 87);
    EXPECT_TRUE(journal.isRecording());
    journal.stopRecording();
    EXPECT_FALSE(journal.isRecording());
    EXPECT_EQ(journal.enter("a"), std::nullopt);
    EXPECT_EQ(journal.enter("a"), 87);
    EXPECT_THAT(journal.calls(), ElementsAre("a"));
}

TEST(Journal, drops_plans_and_keeps_past_calls) {
    Journal journal;
    journal.fail("a");
    journal.failAll("b");
    journal.enter("c");
    journal.dropPlans();
    EXPECT_EQ(journal.enter("a"), std::nullopt);
    EXPECT_EQ(journal.enter("b"), std::nullopt);
    EXPECT_EQ(journal.count("c"), 1u);
}

} // namespace
} // namespace tests
