#include "Platform/Async/MainContext.h"
#include "tests/Platform/Async/Gate.h"

#include <stdexcept>
#include <thread>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace vorn {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

struct TaskFixture : ::testing::Test {
    Journal journal;
    Gate<> gate;
    MainContext context;
};

TEST_F(TaskFixture, BeginsWhenTheContextRunsAndNotBefore)
{
    const Task task(context, waitAndTell(&gate, &journal));
    EXPECT_THAT(journal, IsEmpty());
    context.runUntilIdle();
    EXPECT_THAT(journal, ElementsAre("began"));
    EXPECT_TRUE(task.isRunning());
}

TEST_F(TaskFixture, CancelledBeforeItBeganNeverDoes)
{
    Task task(context, waitAndTell(&gate, &journal));
    task.cancel();
    context.runUntilIdle();
    EXPECT_THAT(journal, IsEmpty());
    EXPECT_FALSE(task.isRunning());
}

TEST_F(TaskFixture, CancelledWhileItWaitsUnwindsOnlyWhenTheContextRuns)
{
    Task task(context, waitAndTell(&gate, &journal));
    context.runUntilIdle();
    task.cancel();
    EXPECT_EQ(gate.stops, 1);
    EXPECT_THAT(journal, ElementsAre("began"));
    task.cancel(); // a second time says nothing new
    context.runUntilIdle();
    EXPECT_EQ(gate.stops, 1);
    EXPECT_THAT(journal, ElementsAre("began", "cancelled"));
    EXPECT_EQ(context.runningTasks(), 0U);
}

TEST_F(TaskFixture, CancelledWithAResultOnItsWayDropsTheResult)
{
    Task task(context, waitAndTell(&gate, &journal));
    context.runUntilIdle();
    gate.answer();
    task.cancel();
    EXPECT_EQ(gate.stops, 0) << "nothing is left to stop";
    context.runUntilIdle();
    EXPECT_THAT(journal, ElementsAre("began", "cancelled"));
}

Async<> waitThrice(Gate<>* gate, Journal* journal)
{
    for (int round = 0; round < 3; ++round) {
        try {
            co_await gate->wait();
            journal->emplace_back("answered");
        } catch (const Cancelled&) {
            journal->emplace_back("cancelled");
        }
    }
}

TEST_F(TaskFixture, EveryAwaitAfterACancelThrowsAndStartsNothing)
{
    Task task(context, waitThrice(&gate, &journal));
    context.runUntilIdle();
    task.cancel();
    context.runUntilIdle();
    EXPECT_THAT(journal, ElementsAre("cancelled", "cancelled", "cancelled"));
    EXPECT_EQ(gate.waits, 1);
}

TEST_F(TaskFixture, ReplacedByAnotherIsCancelledWhileTheOtherBegins)
{
    Journal second;
    Gate<> secondGate;
    Task task(context, waitAndTell(&gate, &journal));
    context.runUntilIdle();
    task = Task(context, waitAndTell(&secondGate, &second));
    context.runUntilIdle();
    EXPECT_THAT(journal, ElementsAre("began", "cancelled"));
    EXPECT_THAT(second, ElementsAre("began"));
    EXPECT_TRUE(task.isRunning());
    task = {};
    context.runUntilIdle();
    EXPECT_THAT(second, ElementsAre("began", "cancelled"));
}

TEST_F(TaskFixture, MovedAwayIsNotCancelled)
{
    Task task(context, waitAndTell(&gate, &journal));
    {
        Task moved = std::move(task);
        task = std::move(moved);
    }
    context.runUntilIdle();
    EXPECT_THAT(journal, ElementsAre("began"));
}

TEST_F(TaskFixture, DetachedRunsWithoutAHandle)
{
    Task::detached(context, waitAndTell(&gate, &journal));
    context.runUntilIdle();
    gate.answer();
    context.runUntilIdle();
    EXPECT_THAT(journal, ElementsAre("began", "answered"));
}

Async<> replaceHandle(Task* handle, MainContext* context, Gate<>* gate, Journal* journal)
{
    *handle = Task(*context, waitAndTell(gate, journal));
    journal->emplace_back("replaced");
    try {
        co_await gate->wait();
    } catch (const Cancelled&) {
        journal->emplace_back("old one cancelled");
    }
}

TEST_F(TaskFixture, MayReplaceItselfFromInside)
{
    Task task;
    task = Task(context, replaceHandle(&task, &context, &gate, &journal));
    context.runUntilIdle();
    EXPECT_THAT(journal, ElementsAre("replaced", "old one cancelled", "began"));
    EXPECT_EQ(context.runningTasks(), 1U);
}

Async<> cancelItself(Task* handle, Journal* journal)
{
    handle->cancel();
    journal->emplace_back("goes on until it waits");
    co_await checkCancellation();
    journal->emplace_back("never");
}

TEST_F(TaskFixture, MayCancelItselfFromInside)
{
    Task task;
    task = Task(context, cancelItself(&task, &journal));
    context.runUntilIdle();
    EXPECT_THAT(journal, ElementsAre("goes on until it waits"));
    EXPECT_FALSE(task.isRunning());
}

Async<> waitAndStopAnother(Task* other)
{
    co_await suspend<void>([other](Resume<void> resume) -> CancelAction {
        return [other, resume = std::move(resume)] { other->cancel(); };
    });
}

TEST_F(TaskFixture, ACancelActionMayCancelAnotherTaskAndItsOwn)
{
    Task first(context, waitAndTell(&gate, &journal));
    Task second;
    second = Task(context, waitAndStopAnother(&first));
    Task itself;
    itself = Task(context, waitAndStopAnother(&itself));
    context.runUntilIdle();
    second.cancel();
    itself.cancel();
    context.runUntilIdle();
    EXPECT_THAT(journal, ElementsAre("began", "cancelled"));
    EXPECT_EQ(context.runningTasks(), 0U);
}

Async<int> level(int depth, Gate<>* gate)
{
    if (depth == 0) {
        co_await gate->wait();
        throw std::runtime_error("from below");
    }
    co_return 1 + co_await level(depth - 1, gate);
}

Async<> tellError(Async<int> work, Journal* journal)
{
    try {
        co_await std::move(work);
    } catch (const std::runtime_error& error) {
        journal->emplace_back(error.what());
    }
}

TEST_F(TaskFixture, AnErrorPassesThroughEveryLevel)
{
    const Task task(context, tellError(level(20, &gate), &journal));
    context.runUntilIdle();
    gate.answer();
    context.runUntilIdle();
    EXPECT_THAT(journal, ElementsAre("from below"));
}

Async<int> one()
{
    co_return 1;
}

Async<int> sumOfMany(int count)
{
    int sum = 0;
    for (int i = 0; i < count; ++i) sum += co_await one();
    co_return sum;
}

TEST_F(TaskFixture, AMillionAwaitsThatEndAtOnceNeedNoStack)
{
    EXPECT_EQ(context.run(sumOfMany(1'000'000)), 1'000'000);
}

TEST_F(TaskFixture, WorkThatNobodyAwaitsIsDestroyedWithoutBeginning)
{
    {
        const Async<> unused = waitAndTell(&gate, &journal);
    }
    EXPECT_THAT(journal, IsEmpty());
}

Async<> cleanUpShielded(Gate<>* work, Gate<>* cleanUp, Journal* journal)
{
    bool failed = false;
    try {
        co_await work->wait();
    } catch (const Cancelled&) {
        failed = true;
    }
    if (failed) co_await shielded(waitAndTell(cleanUp, journal));
    journal->emplace_back("after the shield");
    co_await checkCancellation();
    journal->emplace_back("never");
}

TEST_F(TaskFixture, ShieldedCleanUpGoesOutAfterACancelAndTheNextAwaitThrows)
{
    Gate<> cleanUp;
    Task task(context, cleanUpShielded(&gate, &cleanUp, &journal));
    context.runUntilIdle();
    task.cancel();
    context.runUntilIdle();
    EXPECT_THAT(journal, ElementsAre("began"));
    cleanUp.answer();
    context.runUntilIdle();
    EXPECT_THAT(journal, ElementsAre("began", "answered", "after the shield"));
    EXPECT_FALSE(task.isRunning());
}

Async<> shieldedTwice(Gate<>* inner, Gate<>* outer, Journal* journal)
{
    co_await shielded(waitAndTell(inner, journal));
    co_await waitAndTell(outer, journal);
}

Async<> shieldedThenChecked(Async<> work, Journal* journal)
{
    co_await shielded(std::move(work));
    journal->emplace_back("shield ended");
    co_await checkCancellation();
    journal->emplace_back("never");
}

TEST_F(TaskFixture, TheOuterShieldHoldsAfterTheInnerOneEnded)
{
    Gate<> outer;
    Task task(context, shieldedThenChecked(shieldedTwice(&gate, &outer, &journal), &journal));
    context.runUntilIdle();
    task.cancel();
    EXPECT_EQ(gate.stops, 0);
    gate.answer();
    context.runUntilIdle();
    outer.answer();
    context.runUntilIdle();
    EXPECT_THAT(journal, ElementsAre("began", "answered", "began", "answered", "shield ended"));
}

Async<> failShielded(Gate<>* gate, Journal* journal)
{
    Gate<> never;
    try {
        co_await shielded(tellError(level(1, gate), journal));
        co_await shielded([](Gate<>* at) -> Async<> {
            co_await at->wait();
            throw std::runtime_error("clean-up failed");
        }(gate));
    } catch (const std::runtime_error& error) {
        journal->emplace_back(error.what());
    }
    co_await never.wait();
}

TEST_F(TaskFixture, AShieldEndsWithItsWorkAlsoWhenThatFails)
{
    Task task(context, failShielded(&gate, &journal));
    context.runUntilIdle();
    task.cancel();
    gate.answer();
    context.runUntilIdle();
    gate.answer();
    context.runUntilIdle();
    EXPECT_THAT(journal, ElementsAre("from below", "clean-up failed"));
    EXPECT_EQ(context.runningTasks(), 0U);
}

struct TaskDeathTest : TaskFixture {
    static void SetUpTestSuite() { GTEST_FLAG_SET(death_test_style, "threadsafe"); }
};

TEST_F(TaskDeathTest, AnErrorThatNobodyHandlesEndsTheProgram)
{
    EXPECT_DEATH(
        {
            Task::detached(context, []() -> Async<> {
                throw std::runtime_error("lost");
                co_return;
            }());
            context.runUntilIdle();
        },
        "nobody handles: lost");
}

TEST_F(TaskDeathTest, AnErrorOfAnyOtherTypeEndsTheProgramToo)
{
    EXPECT_DEATH(
        {
            Task::detached(context, []() -> Async<> {
                throw 42; // NOLINT(misc-throw-by-value-catch-by-reference): what a careless library throws
                co_return;
            }());
            context.runUntilIdle();
        },
        "an error that nobody handles");
}

TEST_F(TaskDeathTest, DestroyedOnAnotherThreadWhileItRunsEndsTheProgram)
{
    EXPECT_DEATH(
        {
            Task task(context, waitAndTell(&gate, &journal));
            std::thread([moved = std::move(task)] {}).join();
        },
        "own thread may cancel its tasks");
}

TEST_F(TaskDeathTest, StartedOnAnotherThreadEndsTheProgram)
{
    EXPECT_DEATH(
        { std::thread([this] { Task::detached(context, waitAndTell(&gate, &journal)); }).join(); },
        "own thread may start a task");
}

TEST_F(TaskFixture, MayDieOnAnyThreadOnceItHasEnded)
{
    Task task(context, waitAndTell(&gate, &journal));
    context.runUntilIdle();
    gate.answer();
    context.runUntilIdle();
    std::thread([moved = std::move(task)] {}).join();
    EXPECT_THAT(journal, ElementsAre("began", "answered"));
}

} // namespace
} // namespace vorn
