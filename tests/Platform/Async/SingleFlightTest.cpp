#include "Platform/Async/SingleFlight.h"
#include "tests/Platform/Async/Gate.h"

#include <atomic>
#include <memory>
#include <stdexcept>
#include <thread>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace vorn {
namespace {

using ::testing::AllOf;
using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::SizeIs;

Async<> ask(SingleFlight<int>* flight, SingleFlight<int>::Work work, Journal* journal)
{
    try {
        journal->push_back(std::to_string(co_await flight->run(std::move(work))));
    } catch (const std::exception& error) {
        journal->emplace_back(error.what());
    }
}

struct SingleFlightTest : ::testing::Test {
    Journal journal;
    Gate<int> gate;
    int runs = 0;
    SingleFlight<int> flight;
    SingleFlight<int>::Work work = [this] {
        ++runs;
        return gate.wait();
    };

    Async<> asked() { return ask(&flight, work, &journal); }
};

TEST_F(SingleFlightTest, TenCallersShareOneRun)
{
    MainContext context;
    for (int i = 0; i < 10; ++i) Task::detached(context, asked());
    context.runUntilIdle();
    gate.answer(8);
    context.runUntilIdle();
    EXPECT_EQ(runs, 1);
    EXPECT_THAT(journal, AllOf(SizeIs(10), Each("8")));
    EXPECT_EQ(context.runningTasks(), 0U);
}

TEST_F(SingleFlightTest, ACancelledCallerStopsWaitingAndTheRunGoesOn)
{
    struct Case {
        const char* name;
        std::size_t cancelled;
    };
    for (const auto& each : {Case{"the one that began the run", 0}, Case{"one that joined", 2}}) {
        SCOPED_TRACE(each.name);
        runs = 0;
        journal.clear();
        MainContext context;
        std::vector<Task> tasks;
        tasks.reserve(4);
        for (int i = 0; i < 4; ++i) tasks.emplace_back(context, asked());
        context.runUntilIdle();
        tasks[each.cancelled].cancel();
        context.runUntilIdle();
        EXPECT_THAT(journal, ElementsAre("cancelled"));
        EXPECT_EQ(gate.stops, 0);
        gate.answer(3);
        context.runUntilIdle();
        EXPECT_THAT(journal, ElementsAre("cancelled", "3", "3", "3"));
        EXPECT_EQ(runs, 1);
    }
}

TEST_F(SingleFlightTest, CancelledBeforeTheRunBeganItStillRunsForTheOthers)
{
    MainContext context;
    Task first(context, asked());
    const Task second(context, asked());
    context.runPending(); // both have joined; the run itself is queued
    EXPECT_EQ(runs, 0);
    first.cancel();
    context.runUntilIdle();
    gate.answer(5);
    context.runUntilIdle();
    EXPECT_THAT(journal, ElementsAre("cancelled", "5"));
}

TEST_F(SingleFlightTest, AFailedRunFailsForAllAndTheNextCallBeginsAnew)
{
    MainContext context;
    for (int i = 0; i < 3; ++i) Task::detached(context, asked());
    context.runUntilIdle();
    gate.fail(std::make_exception_ptr(std::runtime_error("revoked")));
    context.runUntilIdle();
    EXPECT_THAT(journal, ElementsAre("revoked", "revoked", "revoked"));
    Task::detached(context, asked());
    context.runUntilIdle();
    gate.answer(1);
    context.runUntilIdle();
    EXPECT_EQ(runs, 2);
    EXPECT_EQ(journal.back(), "1");
}

TEST_F(SingleFlightTest, WorkThatThrowsBeforeItGivesACoroutineFailsTheSame)
{
    MainContext context;
    const SingleFlight<int>::Work broken = []() -> Async<int> { throw std::runtime_error("at once"); };
    Task::detached(context, ask(&flight, broken, &journal));
    Task::detached(context, ask(&flight, broken, &journal));
    context.runUntilIdle();
    EXPECT_THAT(journal, ElementsAre("at once", "at once"));
}

TEST_F(SingleFlightTest, ACallerThatComesWithTheAnswerJoinsOrBeginsAnewButNeverHangs)
{
    MainContext context;
    Task::detached(context, asked());
    context.runUntilIdle();
    gate.answer(1);
    Task::detached(context, asked()); // before the run has taken its answer
    context.runPending();
    Task::detached(context, asked()); // after it
    context.runUntilIdle();
    gate.answer(2);
    context.runUntilIdle();
    EXPECT_EQ(context.runningTasks(), 0U);
    EXPECT_THAT(journal, ElementsAre("1", "2", "2"));
    EXPECT_EQ(runs, 2);
}

TEST_F(SingleFlightTest, EndsAsCancelledForAllWhenTheRunIsShutDown)
{
    MainContext context;
    Task::detached(context, asked());
    Task::detached(context, asked());
    context.runUntilIdle();
    context.shutDown();
    EXPECT_THAT(journal, ElementsAre("cancelled", "cancelled"));
    EXPECT_EQ(gate.stops, 1);
}

/// Joins a run in another context, and then destroys that context.
void joinAndTearDown(SingleFlightTest& fix, bool runHasBegun)
{
    MainContext waiting;
    auto own = std::make_unique<MainContext>();
    Task::detached(*own, fix.asked());
    own->runPending(); // the run is queued
    if (runHasBegun) own->runPending();
    EXPECT_EQ(fix.runs, runHasBegun ? 1 : 0);
    Task::detached(waiting, fix.asked());
    waiting.runUntilIdle();
    own.reset();
    waiting.runUntilIdle();
    EXPECT_THAT(fix.journal, ElementsAre("cancelled")) << "of the one that joined; the other died with its context";
    Task::detached(waiting, fix.asked());
    waiting.runUntilIdle();
    fix.gate.answer(6);
    waiting.runUntilIdle();
    EXPECT_EQ(fix.journal.back(), "6") << "the next run begins anew";
}

TEST_F(SingleFlightTest, OthersEndAsCancelledWhenItsContextIsTornDownBeforeTheRunBegan)
{
    joinAndTearDown(*this, false);
}

TEST_F(SingleFlightTest, OthersEndAsCancelledWhenItsContextIsTornDownMeanwhile)
{
    joinAndTearDown(*this, true);
}

/// A run of a few turns of its own context, failing every third time.
Async<int> slowly(std::atomic<int>* runs)
{
    const int number = ++*runs;
    for (int turn = 0; turn < 3; ++turn) {
        co_await suspend<void>([](const Resume<void>& resume) -> CancelAction {
            resume();
            return {};
        });
    }
    if (number % 3 == 0) throw std::runtime_error("every third fails");
    co_return number;
}

TEST(SingleFlight, CallersOnSeveralThreadsAllGetAnAnswer)
{
    constexpr int threadCount = 4;
    constexpr int callsEach = 250; // a thousand together
    SingleFlight<int> flight;
    std::atomic<int> runs = 0;
    std::atomic<int> answers = 0;
    std::atomic<int> threadsAtWork = threadCount;
    const auto callAgainAndAgain = [&] {
        MainContext context;
        for (int i = 0; i < callsEach; ++i) {
            try {
                answers += context.run(flight.run([&runs] { return slowly(&runs); })) > 0 ? 1 : 0;
            } catch (const std::runtime_error&) {
                ++answers;
            }
        }
        // Others may still wait for a run that began here.
        --threadsAtWork;
        while (threadsAtWork > 0) {
            context.runUntilIdle();
            std::this_thread::yield();
        }
    };
    std::vector<std::thread> threads;
    threads.reserve(threadCount);
    for (int i = 0; i < threadCount; ++i) threads.emplace_back(callAgainAndAgain);
    for (auto& thread : threads) thread.join();
    EXPECT_EQ(answers, threadCount * callsEach);
    EXPECT_LE(runs, threadCount * callsEach);
}

} // namespace
} // namespace vorn
