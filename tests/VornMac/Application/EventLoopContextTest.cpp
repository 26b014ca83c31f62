#include "VornMac/Application/EventLoopContext.h"

#include <thread>

#include <QEventLoop>
#include <gtest/gtest.h>

namespace vorn {
namespace {

TEST(EventLoopContext, RunsWhatOtherThreadsPost)
{
    EventLoopContext loop;
    QEventLoop events;
    std::thread::id ranOn;
    std::thread other([&] {
        loop.context().post([&] {
            ranOn = std::this_thread::get_id();
            events.quit();
        });
    });
    events.exec();
    other.join();
    EXPECT_EQ(ranOn, std::this_thread::get_id());
}

TEST(EventLoopContext, RunsWhatWorkPosts)
{
    EventLoopContext loop;
    QEventLoop events;
    int rounds = 0;
    std::function<void()> next = [&] {
        if (++rounds == 100) return events.quit();
        loop.context().post(next);
    };
    loop.context().post(next);
    events.exec();
    EXPECT_EQ(rounds, 100);
}

TEST(EventLoopContext, GoesOnInANestedLoop)
{
    EventLoopContext loop;
    QEventLoop events;
    std::vector<std::string> ran;
    loop.context().post([&] {
        QEventLoop menu; // ended by work that is posted while it runs
        loop.context().post([&] {
            ran.emplace_back("inside");
            menu.quit();
        });
        menu.exec();
        ran.emplace_back("outside");
        events.quit();
    });
    events.exec();
    EXPECT_EQ(ran, (std::vector<std::string>{"inside", "outside"}));
}

TEST(EventLoopContext, RunsTasks)
{
    EventLoopContext loop;
    QEventLoop events;
    const auto job = [&events]() -> Async<> {
        events.quit();
        co_return;
    };
    const Task task(loop.context(), job());
    events.exec();
    EXPECT_TRUE(loop.context().shutDown(std::chrono::seconds(10)));
    EXPECT_FALSE(task.isRunning());
}

} // namespace
} // namespace vorn
