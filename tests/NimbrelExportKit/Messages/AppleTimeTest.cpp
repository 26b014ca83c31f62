#include "NimbrelExportKit/Messages/AppleTime.h"

#include <gtest/gtest.h>
#include <limits>

namespace vorn {
namespace {

using AppleTime::unixSeconds;

TEST(AppleTime, ZeroIsNoDate)
{
    EXPECT_EQ(unixSeconds(0), std::nullopt);
    EXPECT_EQ(AppleTime::date(0), std::nullopt);
}

TEST(AppleTime, ReadsSecondsAndNanosecondsOfTheSameInstantAlike)
{
    EXPECT_EQ(unixSeconds(700'000'000), 1'678'307'200.0);
    EXPECT_EQ(unixSeconds(700'000'000'000'000'000), 1'678'307'200.0);
    EXPECT_EQ(AppleTime::date(700'000'000)->time_since_epoch().count(), 1'678'307'200.0);
}

TEST(AppleTime, CountsSecondsUpToTheBoundAndNanosecondsBeyond)
{
    EXPECT_EQ(unixSeconds(1'000'000'000'000), 1'000'978'307'200.0);
    EXPECT_EQ(unixSeconds(1'000'000'000'001), 1'000'000'000'001 / 1e9 + 978'307'200.0);
    EXPECT_EQ(unixSeconds(-1'000'000'000'000), -999'021'692'800.0);
    EXPECT_EQ(unixSeconds(-1'000'000'000'001), -1'000'000'000'001 / 1e9 + 978'307'200.0);
}

TEST(AppleTime, ReadsNegativeNanoseconds)
{
    EXPECT_EQ(unixSeconds(-2'000'000'000'000), 978'305'200.0);
}

TEST(AppleTime, KeepsFractionsOfASecond)
{
    EXPECT_DOUBLE_EQ(unixSeconds(700'000'000'500'000'000).value(), 1'678'307'200.5);
}

TEST(AppleTime, TakesEveryStamp)
{
    EXPECT_NEAR(unixSeconds(std::numeric_limits<std::int64_t>::max()).value(), 10'201'679'236.854, 0.01);
    EXPECT_NEAR(unixSeconds(std::numeric_limits<std::int64_t>::min()).value(), -8'245'064'836.854, 0.01);
}

} // namespace
} // namespace vorn
