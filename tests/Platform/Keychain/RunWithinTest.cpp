#include "Platform/Keychain/linux/RunWithin.h"

#include <future>
#include <memory>
#include <thread>

#include <gtest/gtest.h>

namespace vorn {
namespace {

using namespace std::chrono_literals;

TEST(RunWithin, RunsWorkOnAnotherThreadToItsEnd)
{
    std::thread::id ranOn;
    EXPECT_TRUE(runWithin(1h, [&ranOn] { ranOn = std::this_thread::get_id(); }));
    EXPECT_NE(ranOn, std::thread::id());
    EXPECT_NE(ranOn, std::this_thread::get_id());
}

/// Signals when it is destroyed.
class Owned {
public:
    ~Owned() { gone_.set_value(); }
    std::future<void> gone() { return gone_.get_future(); }

private:
    std::promise<void> gone_;
};

TEST(RunWithin, HasLetGoOfWhatTheWorkOwnedWhenItReturns)
{
    auto owned = std::make_shared<Owned>();
    const std::future<void> gone = owned->gone();
    EXPECT_TRUE(runWithin(1h, [kept = std::move(owned)] {}));
    EXPECT_EQ(gone.wait_for(0s), std::future_status::ready);
}

TEST(RunWithin, LeavesWorkThatHangsToItself)
{
    auto owned = std::make_shared<Owned>();
    const std::future<void> gone = owned->gone();
    std::promise<void> goOn;
    EXPECT_FALSE(runWithin(1ms, [kept = std::move(owned), wait = goOn.get_future().share()] { wait.wait(); }));
    EXPECT_EQ(gone.wait_for(0s), std::future_status::timeout);
    goOn.set_value();
    gone.wait(); // what the work owned is destroyed when it ends
}

} // namespace
} // namespace vorn
