#include "Platform/Async/BackgroundPool.h"

#include "Platform/Async/WorkQueue.h"

#include <atomic>
#include <thread>
#include <utility>
#include <vector>

namespace vorn {

struct BackgroundPool::Threads {
    detail::WorkQueue queue{{}};
    std::atomic<bool> ended = false;
    std::vector<std::thread> all;

    ~Threads()
    {
        ended = true;
        for (std::size_t count = 0; count < all.size(); ++count) queue.post([] {}); // each wakes one
        for (std::thread& thread : all) thread.join();
    }

    void run()
    {
        while (true) {
            queue.waitForWork();
            if (ended) return;
            queue.runOne();
        }
    }
};

BackgroundPool::BackgroundPool(unsigned threads) : threads_(std::make_unique<Threads>())
{
    while (threads_->all.size() < threads) threads_->all.emplace_back([own = threads_.get()] { own->run(); });
}

BackgroundPool::~BackgroundPool() = default;

void BackgroundPool::post(std::function<void()> work)
{
    threads_->queue.post(std::move(work));
}

} // namespace vorn
