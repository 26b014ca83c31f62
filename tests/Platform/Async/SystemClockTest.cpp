#include "Platform/Async/Clock.h"
#include "Platform/Async/MainContext.h"
#include "tests/Platform/Async/Gate.h"

#include <memory>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace vorn {
namespace {

using namespace std::chrono_literals;
using ::testing::ElementsAre;

Async<> sleepAndTell(Clock* clock, Clock::Duration duration, std::string name, Journal* journal)
{
    try {
        co_await clock->sleep(duration);
        journal->push_back(std::move(name));
    } catch (const Cancelled&) {
        journal->push_back(name + " cancelled");
    }
}

struct SystemClockTest : ::testing::Test {
    Journal journal;
    SystemClock clock;
    MainContext context;
};

TEST_F(SystemClockTest, SleepsDoNotEndEarly)
{
    for (const auto duration : {Clock::Duration(1ns), Clock::Duration(1ms), Clock::Duration(20ms)}) {
        const auto before = clock.now();
        context.run(clock.sleep(duration));
        EXPECT_GE(clock.now() - before, duration);
    }
}

TEST_F(SystemClockTest, ASleepOfMoreThanASecondLastsToItsEnd)
{
    const auto before = clock.now(); // the timer runs for a second at most; its end must not end the sleep
    context.run(clock.sleep(1200ms));
    EXPECT_GE(clock.now() - before, 1200ms);
}

TEST_F(SystemClockTest, SleepsOfNothingOrLessEndWithoutWaiting)
{
    for (const auto duration : {Clock::Duration::zero(), Clock::Duration(-1h), Clock::Duration::min()}) {
        const Task task(context, sleepAndTell(&clock, duration, "slept", &journal));
        context.runPending(); // one turn: it never suspends
        EXPECT_FALSE(task.isRunning());
    }
    EXPECT_THAT(journal, ElementsAre("slept", "slept", "slept"));
}

Async<> cancelAndSleep(Task* handle, Clock* clock, Journal* journal)
{
    handle->cancel();
    co_await sleepAndTell(clock, Clock::Duration::zero(), "slept", journal);
}

TEST_F(SystemClockTest, ACancelledTaskDoesNotSleepEvenForNothing)
{
    Task task;
    task = Task(context, cancelAndSleep(&task, &clock, &journal));
    context.runUntilIdle();
    EXPECT_THAT(journal, ElementsAre("slept cancelled"));
}

TEST_F(SystemClockTest, CancelledASleepEndsAtOnceHoweverLong)
{
    Task hour(context, sleepAndTell(&clock, 1h, "an hour", &journal));
    Task ever(context, sleepAndTell(&clock, Clock::Duration::max(), "forever", &journal));
    context.runUntilIdle();
    EXPECT_TRUE(journal.empty());
    hour.cancel();
    ever.cancel();
    context.runUntilIdle();
    EXPECT_THAT(journal, ElementsAre("an hour cancelled", "forever cancelled"));
}

TEST_F(SystemClockTest, SleepsEndInTheOrderOfTheirDeadlines)
{
    // The deadlines come in this order however long this thread is delayed between two calls.
    Task last(context, sleepAndTell(&clock, 1h, "last", &journal));
    Task::detached(context, sleepAndTell(&clock, 1ms, "first", &journal));
    Task::detached(context, sleepAndTell(&clock, 30ms, "second", &journal));
    context.runUntil([this] { return context.runningTasks() == 1; });
    EXPECT_THAT(journal, ElementsAre("first", "second"));
    last.cancel();
    context.runUntilIdle();
    EXPECT_THAT(journal, ElementsAre("first", "second", "last cancelled"));
}

TEST_F(SystemClockTest, ThousandsMaySleepAndHalfOfThemBeCancelled)
{
    std::vector<Task> tasks;
    tasks.reserve(4000);
    for (int i = 0; i < 4000; ++i)
        tasks.emplace_back(context, sleepAndTell(&clock, std::chrono::microseconds(i), "", &journal));
    context.runPending();
    for (std::size_t i = 0; i < tasks.size(); i += 2) tasks[i].cancel();
    context.runUntil([this] { return context.runningTasks() == 0; });
    EXPECT_EQ(journal.size(), 4000U);
}

TEST_F(SystemClockTest, TheClockMayGoWhileTasksSleep)
{
    auto own = std::make_unique<SystemClock>();
    Task longSleep(context, sleepAndTell(own.get(), 1h, "long", &journal));
    Task::detached(context, sleepAndTell(own.get(), 5ms, "short", &journal));
    context.runUntilIdle();
    own.reset();
    context.runUntil([this] { return !journal.empty(); });
    EXPECT_THAT(journal, ElementsAre("short"));
    longSleep.cancel();
    context.runUntilIdle();
    EXPECT_THAT(journal, ElementsAre("short", "long cancelled"));
}

TEST(SystemClock, SleepsAreTornDownWithTheirContextBeforeOrAfterTheClock)
{
    Journal journal;
    auto clock = std::make_unique<SystemClock>();
    auto context = std::make_unique<MainContext>();
    for (int i = 0; i < 10; ++i) Task::detached(*context, sleepAndTell(clock.get(), 1h, "never", &journal));
    context->runUntilIdle();
    context.reset();
    context = std::make_unique<MainContext>();
    for (int i = 0; i < 10; ++i) Task::detached(*context, sleepAndTell(clock.get(), 1h, "never", &journal));
    context->runUntilIdle();
    clock.reset();
    context.reset();
    EXPECT_TRUE(journal.empty());
}

TEST_F(SystemClockTest, TheDateIsTheCalendarsInWholeMilliseconds)
{
    const auto before = std::chrono::system_clock::now();
    const auto date = clock.date();
    const auto after = std::chrono::system_clock::now();
    EXPECT_GT(date + 1ms, before);
    EXPECT_LE(date, after);
}

} // namespace
} // namespace vorn
