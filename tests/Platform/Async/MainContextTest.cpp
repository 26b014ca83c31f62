#include "Platform/Async/MainContext.h"
#include "tests/Platform/Async/Gate.h"

#include <algorithm>
#include <atomic>
#include <memory>
#include <stdexcept>
#include <thread>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace vorn {
namespace {

using ::testing::ElementsAre;

Async<int> doubled(int value)
{
    co_return 2 * value;
}

Async<int> failing()
{
    throw std::runtime_error("no answer");
    co_return 0;
}

TEST(MainContext, RunsWorkToItsEndAndGivesItsValueOrError)
{
    MainContext context;
    EXPECT_EQ(context.run(doubled(21)), 42);
    EXPECT_THROW(context.run(failing()), std::runtime_error);
}

TEST(MainContext, RunsWorkInTheOrderItWasPosted)
{
    MainContext context;
    Journal journal;
    for (const char* name : {"a", "b", "c"}) context.post([&journal, name] { journal.emplace_back(name); });
    EXPECT_TRUE(context.runUntilIdle());
    EXPECT_THAT(journal, ElementsAre("a", "b", "c"));
    EXPECT_FALSE(context.runUntilIdle());
}

TEST(MainContext, LeavesToTheNextCallWhatPendingWorkPosts)
{
    MainContext context;
    int runs = 0;
    const std::function<void()> again = [&] {
        ++runs;
        context.post(again);
    };
    context.post(again);
    context.runPending();
    EXPECT_EQ(runs, 1) << "work that posts itself forever must not hold up an event loop";
    context.runPending();
    EXPECT_EQ(runs, 2);
}

TEST(MainContext, WakesItsLoopOnceUntilTheLoopComes)
{
    int wakeUps = 0;
    MainContext context([&wakeUps] { ++wakeUps; });
    context.post([] {});
    context.post([] {});
    EXPECT_EQ(wakeUps, 1);
    context.runPending();
    EXPECT_EQ(wakeUps, 1) << "nothing is left";
    context.post([] {});
    EXPECT_EQ(wakeUps, 2);
}

TEST(MainContext, WakesItsLoopForWhatPendingWorkPosts)
{
    int wakeUps = 0;
    bool ran = false;
    MainContext context([&wakeUps] { ++wakeUps; });
    context.post([&] {
        context.post([&ran] { ran = true; });
        context.post([] {});
    });
    context.runPending();
    EXPECT_EQ(wakeUps, 2);
    EXPECT_FALSE(ran);
    context.runPending();
    EXPECT_TRUE(ran);
}

TEST(MainContext, WorkLeftBehindByRunUntilHasAWakeUpOfItsOwn)
{
    int wakeUps = 0;
    bool done = false;
    MainContext context([&wakeUps] { ++wakeUps; });
    context.post([&] {
        done = true;
        context.post([] {});
    });
    context.runUntil([&done] { return done; });
    EXPECT_EQ(wakeUps, 1) << "the call that this announced has not come yet, and will find what is left";
    context.runPending();
    context.post([] {});
    EXPECT_EQ(wakeUps, 2);
}

TEST(MainContext, MayRunPendingWorkFromInsideOfWork)
{
    MainContext context;
    Journal journal;
    context.post([&] {
        journal.emplace_back("outer begins");
        context.post([&journal] { journal.emplace_back("posted inside"); });
        context.runPending();
        journal.emplace_back("outer ends");
    });
    context.post([&journal] { journal.emplace_back("waiting"); });
    context.runPending();
    EXPECT_THAT(journal, ElementsAre("outer begins", "waiting", "posted inside", "outer ends"));
}

Async<> runLoopInside(MainContext* context, Journal* journal)
{
    journal->emplace_back("dialog opens");
    context->runUntil([journal] { return journal->size() == 4; });
    journal->emplace_back("dialog closes");
    co_await checkCancellation();
    journal->emplace_back("never");
}

TEST(MainContext, ATaskMayRunALoopAndBeCancelledThereWhileOthersGoOn)
{
    Journal journal;
    Gate<> gate;
    MainContext context;
    Task dialog(context, runLoopInside(&context, &journal));
    const Task other(context, waitAndTell(&gate, &journal));
    context.post([&] {
        gate.answer();
        journal.emplace_back("dialog cancelled");
        dialog.cancel();
    });
    context.runUntilIdle();
    EXPECT_THAT(journal, ElementsAre("dialog opens", "began", "dialog cancelled", "answered", "dialog closes"));
    EXPECT_EQ(context.runningTasks(), 0U);
}

TEST(MainContext, SleepsUntilAnotherThreadPosts)
{
    MainContext context;
    bool done = false;
    std::thread thread([&context, &done] { context.post([&done] { done = true; }); });
    context.runUntil([&done] { return done; });
    thread.join();
    EXPECT_TRUE(done);
}

TEST(MainContext, TakesPostsOfManyThreadsAndKeepsTheOrderOfEach)
{
    constexpr int threadCount = 4;
    constexpr int posts = 250;
    MainContext context;
    std::vector<std::vector<int>> got(threadCount);
    int all = 0;
    std::vector<std::thread> threads;
    threads.reserve(threadCount);
    for (auto& own : got) {
        threads.emplace_back([&context, &own, &all] {
            for (int i = 0; i < posts; ++i) {
                context.post([&own, &all, i] {
                    own.push_back(i);
                    ++all;
                });
            }
        });
    }
    context.runUntil([&all] { return all == threadCount * posts; });
    for (auto& thread : threads) thread.join();
    for (const auto& own : got) EXPECT_TRUE(std::is_sorted(own.begin(), own.end()));
}

/// The main thread runs the context only when woken, as an event loop does.
TEST(MainContext, NoWakeUpIsLostWhileThreadsPostAndTheLoopRuns)
{
    constexpr int posts = 2000;
    std::atomic<int> wanted = 0;
    int ran = 0;
    MainContext context([&wanted] {
        ++wanted;
        wanted.notify_one();
    });
    std::thread thread([&context, &ran] {
        for (int i = 0; i < posts; ++i) context.post([&ran] { ++ran; });
    });
    int seen = 0;
    while (ran != posts) {
        wanted.wait(seen);
        seen = wanted;
        context.runPending(); // may add to `ran`
    }
    thread.join();
    EXPECT_EQ(ran, posts);
}

TEST(MainContext, TheHookIsNeverCalledAfterTheContextIsGone)
{
    for (int round = 0; round < 50; ++round) {
        auto loop = std::make_unique<std::atomic<int>>(0); // a late call would use freed memory
        auto context = std::make_unique<MainContext>([&at = *loop] { ++at; });
        std::vector<std::thread> threads;
        context->post([] {});
        context->runUntilIdle();
        Gate<> gate;
        Task::detached(*context, [](Gate<>* at) -> Async<> { co_await at->wait(); }(&gate));
        context->runUntilIdle();
        threads.emplace_back([resume = gate.resumes.back()] { resume(); });
        context.reset();
        loop.reset();
        threads.front().join();
        EXPECT_EQ(gate.waits, 1);
    }
}

/// Counts its living copies.
struct Owned {
    explicit Owned(int* alive) : alive_(alive) { ++*alive_; }
    Owned(const Owned& other) : Owned(other.alive_) {}
    Owned& operator=(const Owned&) = delete;
    ~Owned() { --*alive_; }

private:
    int* alive_;
};

Async<> holdAndWait(Owned, Gate<>* gate, bool shield)
{
    if (shield) co_await shielded(gate->wait());
    co_await gate->wait();
}

TEST(MainContext, TornDownDestroysEveryTaskWhereItStands)
{
    int alive = 0;
    std::vector<Gate<>> gates(3);
    Task cancelled;
    {
        MainContext context;
        Task::detached(context, holdAndWait(Owned(&alive), gates.data(), false));
        Task::detached(context, holdAndWait(Owned(&alive), &gates[1], true));
        cancelled = Task(context, holdAndWait(Owned(&alive), &gates[2], false));
        context.runUntilIdle();
        cancelled.cancel();
        const Task neverBegun(context, holdAndWait(Owned(&alive), gates.data(), false));
        Task::detached(context, holdAndWait(Owned(&alive), gates.data(), false));
        EXPECT_GT(alive, 0);
    }
    EXPECT_EQ(alive, 0);
    for (const auto& gate : gates) EXPECT_EQ(gate.stops, 1) << "what they waited for is stopped";
    EXPECT_FALSE(cancelled.isRunning());
    for (const auto& gate : gates) gate.answer(); // too late, and harmless
}

/// Starts a task in its destructor, such as a last message.
struct StartsTaskWhenDestroyed {
    MainContext* context;
    int* alive;
    Gate<>* gate;
    ~StartsTaskWhenDestroyed() { Task::detached(*context, holdAndWait(Owned(alive), gate, false)); }
};

TEST(MainContext, ATaskBegunWhileTheContextIsTornDownNeitherRunsNorStays)
{
    int alive = 0;
    Gate<> gate;
    {
        MainContext context;
        Task::detached(context, [](MainContext* in, int* count, Gate<>* at) -> Async<> {
            const StartsTaskWhenDestroyed wish{in, count, at};
            co_await at->wait();
        }(&context, &alive, &gate));
        context.runUntilIdle();
    }
    EXPECT_EQ(alive, 0);
}

Async<> waitThenCleanUp(Gate<>* gate, MainContext* context, Journal* journal)
{
    bool cancelled = false;
    try {
        co_await gate->wait();
    } catch (const Cancelled&) {
        cancelled = true;
    }
    if (cancelled) {
        co_await shielded([](MainContext* in, Journal* to) -> Async<> {
            co_await suspend<void>([in](const Resume<void>& resume) -> CancelAction {
                in->post([in, resume] { in->post(resume); }); // the answer takes a few turns
                return {};
            });
            to->emplace_back("cleaned up");
        }(context, journal));
    }
}

TEST(MainContext, ShutDownCancelsEveryTaskAndWaitsForTheirCleanUp)
{
    Journal journal;
    std::vector<Gate<>> gates(2);
    MainContext context;
    Task::detached(context, waitThenCleanUp(gates.data(), &context, &journal));
    const Task task(context, waitThenCleanUp(&gates[1], &context, &journal));
    context.runUntilIdle();
    const Task neverBegun(context, waitAndTell(gates.data(), &journal));
    context.shutDown();
    EXPECT_THAT(journal, ElementsAre("cleaned up", "cleaned up"));
    EXPECT_EQ(context.runningTasks(), 0U);
}

/// Records when a coroutine destroys what it owns.
class Farewell {
public:
    explicit Farewell(Journal* journal) : journal_(journal) {}
    ~Farewell() { journal_->emplace_back("farewell"); }
    Farewell(Farewell&&) = delete;

private:
    Journal* journal_;
};

TEST(MainContext, ShutDownWithALimitLeavesCleanUpThatHangs)
{
    Journal journal;
    Gate<> gate, never;
    const auto cleanUpForever = [](Gate<>* first, Gate<>* second, Journal* to) -> Async<> {
        const Farewell farewell(to);
        try {
            co_await first->wait();
        } catch (const Cancelled&) { // NOLINT(bugprone-empty-catch): goes on below
        }
        co_await shielded(waitAndTell(second, to));
    };
    {
        MainContext context;
        Task::detached(context, cleanUpForever(&gate, &never, &journal));
        Task::detached(context, waitThenCleanUp(&gate, &context, &journal));
        context.runUntilIdle();
        do { // a busy machine may run nothing within the limit
            EXPECT_FALSE(context.shutDown(std::chrono::milliseconds(20)));
        } while (context.runningTasks() > 1);
        EXPECT_EQ(context.runningTasks(), 1U);
        EXPECT_THAT(journal, ElementsAre("began", "cleaned up"));
    }
    EXPECT_THAT(journal, ElementsAre("began", "cleaned up", "farewell")); // destroyed with the context
}

TEST(MainContext, ShutDownWithALimitDoesNotWaitForIt)
{
    Journal journal;
    Gate<> gate;
    MainContext context;
    Task::detached(context, waitThenCleanUp(&gate, &context, &journal));
    context.runUntilIdle();
    EXPECT_TRUE(context.shutDown(std::chrono::hours(24)));
    EXPECT_THAT(journal, ElementsAre("cleaned up"));
}

TEST(MainContext, ShutDownWithoutTasksEndsAtOnce)
{
    MainContext context;
    context.shutDown();
    EXPECT_EQ(context.runningTasks(), 0U);
}

TEST(MainContextDeathTest, WorkThatThrowsEndsTheProgram)
{
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    MainContext context;
    context.post([] { throw std::runtime_error("from posted work"); });
    EXPECT_DEATH(context.runPending(), "");
}

TEST(MainContextDeathTest, DestroyedOnAnotherThreadEndsTheProgram)
{
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_DEATH(
        {
            auto context = std::make_unique<MainContext>();
            std::thread([moved = std::move(context)]() mutable { moved.reset(); }).join();
        },
        "own thread may close it");
}

} // namespace
} // namespace vorn
