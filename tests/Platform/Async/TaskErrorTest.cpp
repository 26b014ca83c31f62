#include "tests/Platform/Async/TaskFixture.h"

#include <stdexcept>
#include <thread>

namespace vorn {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

struct TaskError : TaskFixture {};

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

TEST_F(TaskError, PassesThroughEveryLevel)
{
    const Task task(context, tellError(level(20, &gate), &journal));
    context.runUntilIdle();
    gate.answer();
    context.runUntilIdle();
    EXPECT_THAT(journal, ElementsAre("from below"));
}

Async<> failAtOnce()
{
    throw std::runtime_error("refused without waiting");
    co_return;
}

Async<> cancelledBeforeItAwaits(Task* own, Async<> work, Journal* journal)
{
    own->cancel();
    try {
        co_await std::move(work);
    } catch (const Cancelled&) {
        journal->emplace_back("cancelled");
    } catch (const std::runtime_error& error) {
        journal->emplace_back(error.what());
    }
}

TEST_F(TaskError, OfACancelledTaskIsTheCancelAlone)
{
    Task task;
    task = Task(context, cancelledBeforeItAwaits(&task, failAtOnce(), &journal));
    context.runUntilIdle();
    EXPECT_THAT(journal, ElementsAre("cancelled"));
}

Async<int> succeedAtOnce()
{
    co_return 1;
}

Async<> useAResultAfterACancel(Task* own, Journal* journal)
{
    own->cancel();
    if (co_await succeedAtOnce() == 1) journal->emplace_back("used");
}

TEST_F(TaskError, OfACancelledTaskTakesThePlaceOfAResult)
{
    Task task;
    task = Task(context, useAResultAfterACancel(&task, &journal));
    context.runUntilIdle();
    EXPECT_THAT(journal, IsEmpty());
    EXPECT_FALSE(task.isRunning());
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
        "an unhandled error: lost");
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
        "an unhandled error");
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

} // namespace
} // namespace vorn
