#include "Tools/Terminal/TimeLimit.h"
#include "Platform/Base/CancelFlag.h"
#include "tests/support/async/ManualClock.h"
#include "tests/support/service/Started.h"

#include <gtest/gtest.h>

namespace vorn {
namespace {

using namespace std::chrono_literals;

class TimeLimit : public ::testing::Test {
protected:
    testing::ManualClock clock;
    MainContext main;

    testing::Started<bool> start(Clock::Duration work)
    {
        return {main, endsWithin(&main, &clock, 5s, clock.sleep(work))};
    }
    ~TimeLimit() override { main.shutDown(); }
};

TEST_F(TimeLimit, GivesWorkItsTime)
{
    const auto limited = start(3s);
    clock.advance(3s, main);
    ASSERT_TRUE(limited.hasEnded());
    EXPECT_TRUE(limited.result());
    EXPECT_EQ(main.runningTasks(), 0U);
}

TEST_F(TimeLimit, CancelsWorkThatTakesLonger)
{
    const auto limited = start(60s);
    clock.advance(5s - 1ns, main);
    EXPECT_FALSE(limited.hasEnded());
    clock.advance(1ns, main);
    ASSERT_TRUE(limited.hasEnded());
    EXPECT_FALSE(limited.result());
    EXPECT_EQ(main.runningTasks(), 0U);
}

TEST_F(TimeLimit, IsCancelledTogetherWithItsWork)
{
    auto limited = start(60s);
    clock.advance(1s, main);
    limited.cancel();
    main.runUntilIdle();
    EXPECT_TRUE(testing::errorOf<Cancelled>(limited));
    EXPECT_EQ(main.runningTasks(), 0U);
}

} // namespace
} // namespace vorn
