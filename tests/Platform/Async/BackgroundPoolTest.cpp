#include "Platform/Async/BackgroundPool.h"
#include "Platform/Async/MainContext.h"
#include "tests/Platform/Async/Gate.h"

#include <atomic>
#include <future>
#include <memory>
#include <stdexcept>
#include <thread>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace vorn {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

/// Keeps a pool's only thread busy until released.
class Blocker {
public:
    explicit Blocker(BackgroundPool& pool)
    {
        pool.post([this] {
            began_.set_value();
            released_.get_future().wait();
        });
        began_.get_future().wait();
    }
    void release() { released_.set_value(); }

private:
    std::promise<void> began_;
    std::promise<void> released_;
};

void spinUntil(const std::function<bool()>& done)
{
    while (!done()) std::this_thread::yield();
}

TEST(OnBackground, GivesWhatTheWorkReturnsOnAnotherThread)
{
    BackgroundPool pool;
    MainContext context;
    const auto thread = context.run(onBackground(&pool, [](const CancelFlag&) { return std::this_thread::get_id(); }));
    EXPECT_NE(thread, std::this_thread::get_id());
}

TEST(OnBackground, TakesWorkThatCanOnlyBeMoved)
{
    BackgroundPool pool;
    MainContext context;
    auto doubled = [own = std::make_unique<int>(21)](const CancelFlag&) { return *own * 2; };
    EXPECT_EQ(context.run(onBackground(&pool, std::move(doubled))), 42);
}

TEST(OnBackground, WorkMayReturnNothing)
{
    BackgroundPool pool;
    MainContext context;
    bool ran = false;
    context.run(onBackground(&pool, [&ran](const CancelFlag&) { ran = true; }));
    EXPECT_TRUE(ran);
}

TEST(OnBackground, ThrowsWhatTheWorkThrows)
{
    BackgroundPool pool;
    MainContext context;
    for (int round = 0; round < 50; ++round) {
        try {
            context.run(onBackground(&pool, [round](const CancelFlag&) -> int {
                throw std::runtime_error("round " + std::to_string(round));
            }));
            ADD_FAILURE() << "nothing was thrown";
        } catch (const std::runtime_error& error) {
            EXPECT_EQ(error.what(), "round " + std::to_string(round));
        }
    }
}

/// Records the thread on which it is destroyed.
struct Witness {
    explicit Witness(std::thread::id* at) : diedAt(at) {}
    ~Witness() { *diedAt = std::this_thread::get_id(); }
    Witness(Witness&&) = delete;
    std::thread::id* diedAt;
};

TEST(OnBackground, WhatTheWorkHoldsDiesOnTheCoroutinesThread)
{
    BackgroundPool pool;
    MainContext context;
    for (int round = 0; round < 50; ++round) {
        std::thread::id diedAt;
        auto work = [held = std::make_unique<Witness>(&diedAt)](const CancelFlag&) {};
        context.run(onBackground(&pool, std::move(work)));
        EXPECT_EQ(diedAt, std::this_thread::get_id());
    }
}

Async<> fillOwnBuffer(BackgroundPool* pool, std::atomic<bool>* began, Journal* journal)
{
    std::vector<int> buffer(64); // the work writes here until it has ended, even if the task is cancelled
    try {
        co_await onBackground(pool, [&buffer, began](const CancelFlag& cancel) {
            *began = true;
            for (int i = 0; !cancel.isCancelled(); ++i) buffer[static_cast<std::size_t>(i % 64)] = i;
            for (int i = 0; i < 1000; ++i) buffer[static_cast<std::size_t>(i % 64)] = -1;
        });
        journal->emplace_back("ended");
    } catch (const Cancelled&) {
        journal->emplace_back(buffer.back() == -1 ? "cancelled after the work ended" : "too early");
    }
}

TEST(OnBackground, CancelledWhileItRunsGoesOnOnlyAfterTheWorkHasEnded)
{
    BackgroundPool pool;
    Journal journal;
    std::atomic<bool> began = false;
    MainContext context;
    Task task(context, fillOwnBuffer(&pool, &began, &journal));
    context.runUntilIdle();
    spinUntil([&began] { return began.load(); });
    task.cancel();
    context.runUntil([&task] { return !task.isRunning(); });
    EXPECT_THAT(journal, ElementsAre("cancelled after the work ended"));
}

TEST(OnBackground, TornDownWhileItRunsWaitsForTheWork)
{
    BackgroundPool pool;
    Journal journal;
    std::atomic<bool> began = false;
    {
        MainContext context;
        Task::detached(context, fillOwnBuffer(&pool, &began, &journal));
        context.runUntilIdle();
        spinUntil([&began] { return began.load(); });
    }
    EXPECT_TRUE(journal.empty()) << "clean-up does not run at teardown";
}

Async<> runOnce(BackgroundPool* pool, bool* ran, Journal* journal)
{
    try {
        co_await onBackground(pool, [ran](const CancelFlag&) { *ran = true; });
    } catch (const Cancelled&) {
        journal->emplace_back("cancelled");
    }
}

TEST(OnBackground, CancelledBeforeItsTurnTheWorkNeverRuns)
{
    BackgroundPool pool(1);
    Blocker blocker(pool);
    Journal journal;
    bool ran = false;
    MainContext context;
    Task task(context, runOnce(&pool, &ran, &journal));
    context.runUntilIdle();
    task.cancel();
    blocker.release();
    context.runUntil([&task] { return !task.isRunning(); });
    EXPECT_FALSE(ran);
    EXPECT_THAT(journal, ElementsAre("cancelled"));
}

TEST(OnBackground, EndsAsCancelledWhenThePoolIsDestroyedFirst)
{
    Journal journal;
    bool ran = false;
    MainContext context;
    auto pool = std::make_unique<BackgroundPool>(0); // without a thread, so that the work never runs
    Task::detached(context, runOnce(pool.get(), &ran, &journal));
    context.runUntilIdle();
    EXPECT_THAT(journal, IsEmpty());
    pool.reset();
    context.runUntil([&context] { return context.runningTasks() == 0; });
    EXPECT_FALSE(ran);
    EXPECT_THAT(journal, ElementsAre("cancelled"));
}

TEST(OnBackground, RunsOrEndsAsCancelledWhenThePoolIsDestroyedAsItsThreadComesFree)
{
    Journal journal;
    bool ran = false;
    MainContext context;
    auto pool = std::make_unique<BackgroundPool>(1);
    Blocker blocker(*pool);
    Task::detached(context, runOnce(pool.get(), &ran, &journal));
    context.runUntilIdle();
    std::thread destroyer([&pool] { pool.reset(); });
    blocker.release();
    destroyer.join();
    context.runUntil([&context] { return context.runningTasks() == 0; });
    EXPECT_EQ(journal.empty(), ran) << "either it ran, or it was dropped and says so";
}

TEST(BackgroundPool, WaitsForWhatRunsWhenItIsDestroyed)
{
    std::atomic<bool> began = false;
    bool ended = false;
    {
        BackgroundPool pool;
        pool.post([&] {
            began = true;
            for (int i = 0; i < 1000; ++i) std::this_thread::yield();
            ended = true;
        });
        spinUntil([&began] { return began.load(); });
    }
    EXPECT_TRUE(ended);
}

TEST(BackgroundPool, RunsAsManyAtOnceAsItHasThreads)
{
    std::atomic<int> together = 0;
    std::promise<void> all;
    BackgroundPool pool(3); // last: its threads use what is above until it is destroyed
    for (int i = 0; i < 3; ++i) {
        pool.post([&] {
            if (++together == 3) all.set_value();
            spinUntil([&together] { return together == 3; });
        });
    }
    all.get_future().wait();
    EXPECT_EQ(together, 3);
}

} // namespace
} // namespace vorn
