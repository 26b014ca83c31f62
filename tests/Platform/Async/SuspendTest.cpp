#include "Platform/Async/MainContext.h"
#include "tests/Platform/Async/Gate.h"

#include <atomic>
#include <memory>
#include <stdexcept>
#include <thread>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace vorn {
namespace {

using ::testing::ElementsAre;

Async<int> answerInline()
{
    co_return co_await suspend<int>([](const Resume<int>& resume) -> CancelAction {
        resume(1);
        resume(2);
        resume.fail(std::make_exception_ptr(std::runtime_error("late")));
        return {};
    });
}

TEST(Suspend, TakesTheFirstAnswerAlsoFromInsideOfStart)
{
    MainContext context;
    EXPECT_EQ(context.run(answerInline()), 1);
}

Async<> failInStart(std::vector<Resume<void>>* kept)
{
    co_await suspend<void>([kept](const Resume<void>& resume) -> CancelAction {
        kept->push_back(resume);
        throw std::runtime_error("could not begin");
    });
}

TEST(Suspend, ThrowsWhatStartThrowsAndTakesNoAnswerAfterwards)
{
    MainContext context;
    std::vector<Resume<void>> kept;
    EXPECT_THROW(context.run(failInStart(&kept)), std::runtime_error);
    kept.front()();
    context.runUntilIdle();
    EXPECT_EQ(context.runningTasks(), 0U);
}

Async<> failInStartAndWait(std::vector<Resume<void>>* kept, Gate<>* gate, Journal* journal)
{
    try {
        co_await failInStart(kept);
    } catch (const std::runtime_error&) {
        journal->emplace_back("failed");
    }
    co_await waitAndTell(gate, journal);
}

TEST(Suspend, AnAnswerToAStartThatFailedDoesNotEndTheNextWait)
{
    Journal journal;
    Gate<> gate;
    std::vector<Resume<void>> kept;
    MainContext context;
    const Task task(context, failInStartAndWait(&kept, &gate, &journal));
    context.runUntilIdle();
    kept.front()();
    context.runUntilIdle();
    EXPECT_THAT(journal, ElementsAre("failed", "began"));
}

Async<int> receive(Gate<int>* gate)
{
    co_return co_await gate->wait();
}

TEST(Suspend, RethrowsTheErrorItIsGiven)
{
    Gate<int> gate;
    MainContext context;
    context.post([&context, &gate] {
        context.post([&gate] { gate.fail(std::make_exception_ptr(std::runtime_error("refused"))); });
    });
    EXPECT_THROW(context.run(receive(&gate)), std::runtime_error);
}

TEST(Suspend, EndsAsCancelledWhenNobodyIsLeftToAnswer)
{
    Journal journal;
    Gate<> gate;
    MainContext context;
    const Task task(context, waitAndTell(&gate, &journal));
    context.runUntilIdle();
    {
        const auto copy = gate.resumes.back();
        gate.resumes.clear();
        context.runUntilIdle();
        EXPECT_THAT(journal, ElementsAre("began")) << "one copy is left";
    }
    context.runUntilIdle();
    EXPECT_THAT(journal, ElementsAre("began", "cancelled"));
}

Async<std::unique_ptr<int>> receiveOwner(Gate<std::unique_ptr<int>>* gate)
{
    co_return co_await gate->wait();
}

TEST(Suspend, GivesValuesThatCanOnlyBeMoved)
{
    Gate<std::unique_ptr<int>> gate;
    MainContext context;
    context.post([&context, &gate] { context.post([&gate] { gate.answer(std::make_unique<int>(7)); }); });
    EXPECT_EQ(*context.run(receiveOwner(&gate)), 7);
}

TEST(Suspend, AnswersMayRaceFromManyThreadsAndOneWins)
{
    for (int round = 0; round < 100; ++round) {
        Gate<int> gate;
        MainContext context;
        int got = -1;
        const Task task(context, [](Gate<int>* at, int* into) -> Async<> { *into = co_await at->wait(); }(&gate, &got));
        context.runUntilIdle();
        std::vector<std::thread> threads;
        threads.reserve(4);
        for (int i = 0; i < 4; ++i) threads.emplace_back([resume = gate.resumes.back(), i] { resume(i); });
        gate.resumes.clear();
        context.runUntil([&context] { return context.runningTasks() == 0; });
        for (auto& thread : threads) thread.join();
        EXPECT_GE(got, 0);
        EXPECT_LT(got, 4);
    }
}

Async<> collect(Gate<int>* gate, int rounds, std::vector<int>* into)
{
    for (int round = 0; round < rounds; ++round) into->push_back(co_await gate->wait());
}

TEST(Suspend, ALateAnswerOfAnEarlierRoundDoesNotEndALaterOne)
{
    Gate<int> gate;
    MainContext context;
    std::vector<int> got;
    const Task task(context, collect(&gate, 3, &got));
    context.runUntilIdle();
    std::vector<Resume<int>> earlier;
    for (int round = 0; round < 3; ++round) {
        earlier.push_back(gate.resumes.back());
        gate.answer(round);
        context.runUntilIdle();
        for (const auto& resume : earlier) resume(-1);
        context.runUntilIdle();
    }
    EXPECT_THAT(got, ElementsAre(0, 1, 2));
}

Async<> cancelInsideOfStart(Task* handle, OnCancel onCancel, int* stops)
{
    co_await suspend<void>(
        [handle, stops](Resume<void> resume) -> CancelAction {
            handle->cancel();
            return [stops, resume = std::move(resume)] {
                ++*stops;
                resume.fail(std::make_exception_ptr(Cancelled()));
            };
        },
        onCancel);
}

TEST(Suspend, CancelledInsideOfStartStillStopsWhatStartBegan)
{
    for (const auto onCancel : {OnCancel::leave, OnCancel::waitForResult}) {
        SCOPED_TRACE(onCancel == OnCancel::leave ? "leave" : "waitForResult");
        MainContext context;
        int stops = 0;
        Task task;
        task = Task(context, cancelInsideOfStart(&task, onCancel, &stops));
        context.runUntilIdle();
        EXPECT_EQ(stops, 1);
        EXPECT_FALSE(task.isRunning());
    }
}

TEST(Suspend, WaitingForTheResultACancelledTaskGoesOnOnlyWithIt)
{
    Journal journal;
    Gate<> gate;
    MainContext context;
    Task task(context, waitAndTell(&gate, &journal, OnCancel::waitForResult));
    context.runUntilIdle();
    task.cancel();
    context.runUntilIdle();
    EXPECT_EQ(gate.stops, 1);
    EXPECT_THAT(journal, ElementsAre("began"));
    gate.answer();
    context.runUntilIdle();
    EXPECT_THAT(journal, ElementsAre("began", "cancelled")) << "the result is dropped";
}

Async<> answerFromAnotherThread(int rounds, std::atomic<int>* answered)
{
    for (int round = 0; round < rounds; ++round) {
        std::thread thread;
        co_await suspend<void>([&thread, answered](Resume<void> resume) -> CancelAction {
            thread = std::thread([resume = std::move(resume), answered] {
                ++*answered;
                resume();
            });
            return {};
        });
        thread.join();
    }
}

TEST(Suspend, AnswersFromAnotherThreadAreNeverLost)
{
    MainContext context;
    std::atomic<int> answered = 0;
    context.run(answerFromAnotherThread(200, &answered));
    EXPECT_EQ(answered, 200);
}

TEST(Suspend, AnswersAndCancelsMayRace)
{
    for (int round = 0; round < 100; ++round) {
        Journal journal;
        Gate<> gate;
        MainContext context;
        Task task(context, waitAndTell(&gate, &journal));
        context.runUntilIdle();
        std::thread thread([resume = gate.resumes.back()] { resume(); });
        task.cancel();
        context.runUntil([&task] { return !task.isRunning(); });
        thread.join();
        EXPECT_THAT(journal, ElementsAre("began", "cancelled"));
    }
}

} // namespace
} // namespace vorn
