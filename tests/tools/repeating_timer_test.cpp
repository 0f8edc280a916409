#include "tools/vorlen-monitor/repeating_timer.h"

#include <gtest/gtest.h>

namespace vorlen::tool {
namespace {

using namespace std::chrono_literals;

constexpr RepeatingTimer::Clock::time_point start{42h};

TEST(RepeatingTimer, expires_when_the_whole_period_has_passed) {
    RepeatingTimer timer(start, 1s);
    EXPECT_FALSE(timer.hasExpired(start));
    EXPECT_FALSE(timer.hasExpired(start + 1s - 1ns));
    EXPECT_TRUE(timer.hasExpired(start + 1s));
}

TEST(RepeatingTimer, expires_a_period_after_it_was_last_found_expired) {
    RepeatingTimer timer(start, 1s);
    EXPECT_TRUE(timer.hasExpired(start + 10s));
    EXPECT_FALSE(timer.hasExpired(start + 10s));
    EXPECT_FALSE(timer.hasExpired(start + 11s - 1ns));
    EXPECT_TRUE(timer.hasExpired(start + 11s));
}

} // namespace
} // namespace vorlen::tool
