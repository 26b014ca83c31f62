#include "Platform/Async/DetachedThreads.h"

#include <gtest/gtest.h>

#include <future>
#include <memory>
#include <thread>

namespace vorn {
namespace {

TEST(DetachedThreads, LetNoPieceOfWorkWaitForAnother)
{
    DetachedThreads threads;
    const auto answer = std::make_shared<std::promise<void>>();
    const auto ended = std::make_shared<std::promise<void>>();
    threads.post([answer, ended] {
        answer->get_future().wait(); // like waiting for a person
        ended->set_value();
    });
    const auto other = std::make_shared<std::promise<std::thread::id>>();
    threads.post([other] { other->set_value(std::this_thread::get_id()); });
    EXPECT_NE(other->get_future().get(), std::this_thread::get_id());
    answer->set_value();
    ended->get_future().wait();
}

TEST(DetachedThreads, AreNotWaitedForAtTheirEnd)
{
    const auto answer = std::make_shared<std::promise<void>>();
    const auto ended = std::make_shared<std::promise<void>>();
    {
        DetachedThreads threads;
        threads.post([answer, ended] {
            answer->get_future().wait();
            ended->set_value();
        });
    } // would hang here
    answer->set_value();
    ended->get_future().wait();
}

} // namespace
} // namespace vorn
