#include "VornMac/View/Countdown.h"

#include <limits>

#include <gtest/gtest.h>

namespace vorn {
namespace {

using namespace std::chrono_literals;

const Instant noon = std::chrono::sys_days(std::chrono::year(2026) / 3 / 1) + 12h;

TEST(Countdown, CountsASecondThatHasBegun)
{
    EXPECT_EQ(countdown::secondsLeft(noon, noon + 120s), 120);
    EXPECT_EQ(countdown::secondsLeft(noon + 1ms, noon + 120s), 120);
    EXPECT_EQ(countdown::secondsLeft(noon + 999ms, noon + 120s), 120);
    EXPECT_EQ(countdown::secondsLeft(noon + 1s, noon + 120s), 119);
    EXPECT_EQ(countdown::secondsLeft(noon - 1ms, noon), 1);
}

TEST(Countdown, IsNeverBelowZero)
{
    EXPECT_EQ(countdown::secondsLeft(noon, noon), 0);
    EXPECT_EQ(countdown::secondsLeft(noon + 1ms, noon), 0);
    EXPECT_EQ(countdown::secondsLeft(noon + 24h, noon), 0);
}

TEST(Countdown, HoldsTheLongestTime)
{
    EXPECT_EQ(countdown::secondsLeft(noon, noon + std::chrono::years(9000)), std::numeric_limits<int>::max());
}

TEST(Countdown, WaitsForTheNextSecondOfTheExpiry)
{
    EXPECT_EQ(countdown::untilNextSecond(noon, noon + 120s), 1s);
    EXPECT_EQ(countdown::untilNextSecond(noon + 400ms, noon + 120s), 600ms);
    EXPECT_EQ(countdown::untilNextSecond(noon, noon + 1500ms), 500ms);
    EXPECT_EQ(countdown::untilNextSecond(noon, noon + 1ms), 1ms);
}

TEST(Countdown, EndsAtTheExpiry)
{
    EXPECT_EQ(countdown::untilNextSecond(noon, noon), std::nullopt);
    EXPECT_EQ(countdown::untilNextSecond(noon + 1h, noon), std::nullopt);
}

} // namespace
} // namespace vorn
