#include "tests/Platform/Async/TaskFixture.h"

#include <thread>

namespace vorn {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

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
    task.cancel(); // a second call does nothing
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
