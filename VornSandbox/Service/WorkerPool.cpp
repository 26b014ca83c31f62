#include "VornSandbox/Service/WorkerPool.h"

#include <utility>

namespace vorn::sandbox {

void WorkerPool::run(Job job)
{
    bool crowded = false;
    {
        const std::lock_guard lock(mutex_);
        jobs_.push_back(std::move(job));
        const std::size_t wanted = busy_ + jobs_.size();
        crowded = wanted > mostThreads_;
        if (wanted > threads_.size() && !crowded) threads_.emplace_back([this] { work(); });
    }
    wake_.notify_one();
    if (crowded) onCrowded_();
}

void WorkerPool::work()
{
    std::unique_lock lock(mutex_);
    while (true) {
        wake_.wait(lock, [this] { return finishing_ || !jobs_.empty(); });
        if (jobs_.empty()) return;
        const Job job = std::move(jobs_.front());
        jobs_.pop_front();
        ++busy_;
        lock.unlock();
        job();
        lock.lock();
        --busy_;
    }
}

void WorkerPool::finish()
{
    {
        const std::lock_guard lock(mutex_);
        finishing_ = true;
    }
    wake_.notify_all();
    for (std::thread& thread : threads_) {
        if (thread.joinable()) thread.join();
    }
}

} // namespace vorn::sandbox
