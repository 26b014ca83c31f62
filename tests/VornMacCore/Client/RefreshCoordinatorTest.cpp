#include "VornMacCore/Client/RefreshCoordinator.h"

#include "Platform/Async/MainContext.h"
#include "tests/support/service/Started.h"

#include <gtest/gtest.h>

#include <array>
#include <atomic>
#include <stdexcept>
#include <string>
#include <thread>

namespace vorn {
namespace {

using testing::errorOf;
using testing::Started;

StoredSession session(int number)
{
    return {"token-canary-" + std::to_string(number), "refresh-canary", "user-ada", "Ada"};
}

/// Work that counts its runs and ends when told to.
class Work {
public:
    RefreshCoordinator::Work counted()
    {
        return [this] { return run(this); };
    }
    int runs() const { return runs_; }
    void succeed(int number) { resume_.value()(session(number)); }
    void fail(const std::exception_ptr& error) { resume_.value().fail(error); }

private:
    static Async<StoredSession> run(Work* self)
    {
        ++self->runs_;
        co_return co_await suspend<StoredSession>([self](Resume<StoredSession> resume) -> CancelAction {
            self->resume_ = std::move(resume);
            return {};
        });
    }

    int runs_ = 0;
    std::optional<Resume<StoredSession>> resume_;
};

class RefreshCoordinatorTest : public ::testing::Test {
protected:
    ~RefreshCoordinatorTest() override { main_.shutDown(); }

    Started<StoredSession> begin() { return {main_, coordinator_.run(work_.counted())}; }

    Work work_;
    RefreshCoordinator coordinator_;
    MainContext main_;
};

TEST_F(RefreshCoordinatorTest, GivesOneRefreshToEverybody)
{
    const auto first = begin();
    const auto second = begin();
    main_.runUntilIdle();
    const auto late = begin();
    main_.runUntilIdle();
    work_.succeed(2);
    main_.runUntilIdle();
    for (const auto* const call : {&first, &second, &late}) EXPECT_EQ(call->result(), session(2));
    EXPECT_EQ(work_.runs(), 1);
}

TEST_F(RefreshCoordinatorTest, GivesOneErrorToEverybody)
{
    const auto first = begin();
    const auto second = begin();
    main_.runUntilIdle();
    work_.fail(std::make_exception_ptr(std::logic_error("refused")));
    main_.runUntilIdle();
    for (const auto* const call : {&first, &second}) EXPECT_STREQ(errorOf<std::logic_error>(*call)->what(), "refused");
    EXPECT_EQ(work_.runs(), 1);
}

TEST_F(RefreshCoordinatorTest, BeginsAnewAfterEachRefresh)
{
    for (const bool succeeds : {true, false, true}) {
        const auto call = begin();
        main_.runUntilIdle();
        if (succeeds) {
            work_.succeed(7);
        } else {
            work_.fail(std::make_exception_ptr(std::logic_error("refused")));
        }
        main_.runUntilIdle();
        EXPECT_EQ(call.hasFailed(), !succeeds);
    }
    EXPECT_EQ(work_.runs(), 3);
}

TEST_F(RefreshCoordinatorTest, GoesOnForTheOthersWhenOneWaiterIsCancelled)
{
    const auto first = begin();
    auto second = begin();
    main_.runUntilIdle();
    second.cancel();
    main_.runUntilIdle();
    EXPECT_TRUE(errorOf<Cancelled>(second));
    EXPECT_FALSE(first.hasEnded());
    work_.succeed(2);
    main_.runUntilIdle();
    EXPECT_EQ(first.result(), session(2));
}

TEST_F(RefreshCoordinatorTest, GoesOnForTheOthersWhenTheOneThatBeganItIsCancelled)
{
    auto first = begin();
    const auto second = begin();
    main_.runUntilIdle();
    first.cancel();
    main_.runUntilIdle();
    EXPECT_TRUE(errorOf<Cancelled>(first));
    work_.succeed(2);
    main_.runUntilIdle();
    EXPECT_EQ(second.result(), session(2));
    EXPECT_EQ(work_.runs(), 1);
}

TEST_F(RefreshCoordinatorTest, FinishesARefreshForWhichNobodyWaitsAnyMore)
{
    {
        auto only = begin();
        main_.runUntilIdle();
        only.cancel();
        main_.runUntilIdle();
    }
    const auto next = begin(); // joins the refresh under way
    main_.runUntilIdle();
    work_.succeed(2);
    main_.runUntilIdle();
    EXPECT_EQ(next.result(), session(2));
    EXPECT_EQ(work_.runs(), 1);
}

Async<StoredSession> countedSession(std::atomic<int>* runs)
{
    const int run = ++*runs;
    co_return session(run);
}

TEST(RefreshCoordinator, IsSharedByThreads)
{
    RefreshCoordinator coordinator;
    std::atomic<int> runs = 0;
    std::atomic<int> ended = 0;
    std::array<std::thread, 4> threads;
    for (auto& thread : threads) {
        thread = std::thread([&] {
            MainContext own;
            for (int round = 0; round < 500; ++round) {
                EXPECT_EQ(own.run(coordinator.run([&runs] { return countedSession(&runs); })).userId, "user-ada");
            }
            ++ended;
            while (ended < 4) own.runUntilIdle(); // a refresh begun here may still be waited for elsewhere
        });
    }
    for (auto& thread : threads) thread.join();
    EXPECT_GE(runs, 500);
    EXPECT_LE(runs, 2000);
}

} // namespace
} // namespace vorn
