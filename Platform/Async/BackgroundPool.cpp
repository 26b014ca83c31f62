#include "Platform/Async/BackgroundPool.h"

#include <asio/post.hpp>
#include <asio/thread_pool.hpp>

namespace vorn {

struct BackgroundPool::Threads {
    explicit Threads(unsigned count) : pool(count) {}
    asio::thread_pool pool;
};

BackgroundPool::BackgroundPool(unsigned threads) : threads_(std::make_unique<Threads>(threads))
{
}

BackgroundPool::~BackgroundPool()
{
    threads_->pool.stop();
    threads_->pool.join();
}

void BackgroundPool::post(std::function<void()> work)
{
    asio::post(threads_->pool, std::move(work));
}

} // namespace vorn
