#include "Platform/Async/BackgroundPool.h"
#include "Platform/Async/Clock.h"
#include "Platform/Async/MainContext.h"
#include "Platform/Async/SingleFlight.h"

#include <gtest/gtest.h>

namespace vorn {
namespace {

using namespace std::chrono_literals;

Async<int> doubled(int value)
{
    co_return 2 * value;
}

TEST(MainContext, RunsACoroutineToItsEndAndGivesItsValue)
{
    MainContext context;
    EXPECT_EQ(context.run(doubled(21)), 42);
}

TEST(MainContext, SleepsOnTheSystemsClock)
{
    SystemClock clock;
    MainContext context;
    const auto before = clock.now();
    context.run(clock.sleep(20ms));
    EXPECT_GE(clock.now() - before, 20ms);
}

TEST(MainContext, GivesWhatBackgroundWorkReturns)
{
    BackgroundPool pool;
    MainContext context;
    EXPECT_EQ(context.run(onBackground(&pool, [](const CancelFlag&) { return 7; })), 7);
}

Async<> setAfterAHour(Clock* clock, bool* cancelled)
{
    try {
        co_await clock->sleep(1h);
    } catch (const Cancelled&) {
        *cancelled = true;
        throw;
    }
}

TEST(Task, CancelledWhileItSleepsThrowsAtTheAwait)
{
    SystemClock clock;
    MainContext context;
    bool cancelled = false;
    {
        const Task task(context, setAfterAHour(&clock, &cancelled));
        context.runUntilIdle();
        EXPECT_FALSE(cancelled);
    }
    context.runUntilIdle();
    EXPECT_TRUE(cancelled);
    EXPECT_EQ(context.runningTasks(), 0U);
}

Async<int> viaFlight(SingleFlight<int>* flight, int* runs)
{
    co_return co_await flight->run([runs]() -> Async<int> {
        ++*runs;
        return doubled(4);
    });
}

TEST(SingleFlight, SharesOneRun)
{
    MainContext context;
    SingleFlight<int> flight;
    int runs = 0;
    EXPECT_EQ(context.run(viaFlight(&flight, &runs)), 8);
    EXPECT_EQ(runs, 1);
}

} // namespace
} // namespace vorn
