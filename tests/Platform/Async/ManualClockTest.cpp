#include "tests/support/async/ManualClock.h"

#include "Platform/Async/MainContext.h"
#include "tests/Platform/Async/Gate.h"

#include <atomic>
#include <memory>
#include <thread>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace vorn {
namespace {

using namespace std::chrono_literals;
using ::testing::ElementsAre;
using testing::ManualClock;

Async<> sleepAndTell(Clock* clock, Clock::Duration duration, std::string name, Journal* journal)
{
    try {
        co_await clock->sleep(duration);
        journal->push_back(std::move(name));
    } catch (const Cancelled&) {
        journal->push_back(name + " cancelled");
    }
}

struct ManualClockTest : ::testing::Test {
    Journal journal;
    ManualClock clock;
    MainContext context;
    std::atomic<bool> finished = false; ///< work on other threads has ended
};

TEST_F(ManualClockTest, StandsStillUntilItIsMoved)
{
    const auto date = clock.date();
    EXPECT_EQ(clock.now(), 0s);
    clock.advance(1500ms);
    EXPECT_EQ(clock.now(), 1500ms);
    EXPECT_EQ(clock.date(), date + 1500ms);
}

TEST_F(ManualClockTest, TheDateMayBeSetWithoutTouchingSleeps)
{
    Task::detached(context, sleepAndTell(&clock, 10s, "slept", &journal));
    context.runUntilIdle();
    clock.advance(3s);
    clock.setDate(Instant(0ms));
    EXPECT_EQ(clock.now(), 3s);
    EXPECT_EQ(clock.nextDeadline(), 10s);
    clock.advance(2s);
    EXPECT_EQ(clock.date(), Instant(2s));
}

TEST_F(ManualClockTest, WakesByDeadlineAndThenInTheOrderOfBeginning)
{
    Task::detached(context, sleepAndTell(&clock, 5s, "late", &journal));
    Task::detached(context, sleepAndTell(&clock, 2s, "early a", &journal));
    Task::detached(context, sleepAndTell(&clock, 2s, "early b", &journal));
    Task::detached(context, sleepAndTell(&clock, 5001ms, "too late", &journal));
    context.runUntilIdle();
    clock.advance(5s);
    EXPECT_TRUE(journal.empty()) << "they go on when their context runs";
    context.runUntilIdle();
    EXPECT_THAT(journal, ElementsAre("early a", "early b", "late"));
    EXPECT_EQ(clock.pendingSleeps(), 1U);
    EXPECT_EQ(clock.nextDeadline(), 5001ms);
}

Async<> poll(Clock* clock, std::vector<Clock::Duration>* at)
{
    while (clock->now() < 20s) {
        co_await clock->sleep(5s);
        at->push_back(clock->now());
    }
}

TEST_F(ManualClockTest, AdvancedWithAContextATaskThatPollsSeesEachOfItsDeadlines)
{
    std::vector<Clock::Duration> at;
    Task::detached(context, poll(&clock, &at));
    clock.advance(1min, context);
    EXPECT_THAT(at, ElementsAre(5s, 10s, 15s, 20s));
    EXPECT_EQ(clock.now(), 1min);
}

TEST_F(ManualClockTest, ACancelledSleepIsForgotten)
{
    Task task(context, sleepAndTell(&clock, 1s, "slept", &journal));
    context.runUntilIdle();
    EXPECT_EQ(clock.pendingSleeps(), 1U);
    task.cancel();
    EXPECT_EQ(clock.pendingSleeps(), 0U);
    EXPECT_EQ(clock.nextDeadline(), std::nullopt);
    context.runUntilIdle();
    EXPECT_THAT(journal, ElementsAre("slept cancelled"));
}

TEST_F(ManualClockTest, SleepsOfNothingOrLessEndAtOnceAndLongestOnesNever)
{
    Task::detached(context, sleepAndTell(&clock, 0s, "zero", &journal));
    Task::detached(context, sleepAndTell(&clock, -1s, "less", &journal));
    clock.advance(1s);
    Task::detached(context, sleepAndTell(&clock, Clock::Duration::max(), "forever", &journal));
    clock.advance(1h, context);
    EXPECT_THAT(journal, ElementsAre("zero", "less"));
    EXPECT_EQ(clock.pendingSleeps(), 1U);
}

TEST_F(ManualClockTest, MayGoBeforeTheSleepsDo)
{
    auto own = std::make_unique<ManualClock>();
    Task task(context, sleepAndTell(own.get(), 1s, "slept", &journal));
    context.runUntilIdle();
    own.reset();
    task.cancel();
    context.runUntilIdle();
    EXPECT_THAT(journal, ElementsAre("slept cancelled"));
}

TEST_F(ManualClockTest, MayBeMovedAndSleptOnFromSeveralThreads)
{
    std::vector<std::thread> threads;
    threads.reserve(3);
    for (int i = 0; i < 3; ++i) {
        threads.emplace_back([this] {
            MainContext own;
            for (int round = 0; round < 50; ++round) own.run(clock.sleep(1ms));
        });
    }
    std::thread mover([this] {
        while (clock.now() < 1h) {
            if (clock.pendingSleeps() > 0 || clock.nextDeadline()) clock.advance(1ms);
            if (finished) return;
            std::this_thread::yield();
        }
    });
    for (auto& thread : threads) thread.join();
    finished = true;
    mover.join();
    EXPECT_EQ(clock.pendingSleeps(), 0U);
}

} // namespace
} // namespace vorn
