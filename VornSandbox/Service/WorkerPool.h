#pragma once

#include <condition_variable>
#include <cstddef>
#include <deque>
#include <functional>
#include <mutex>
#include <thread>
#include <vector>

namespace vorn::sandbox {

/// Threads that are started when there is work for them, up to a limit. Threads: any.
class WorkerPool {
public:
    using Job = std::function<void()>;

    /// `onCrowded` is called, on the thread that brings the job, for every job that finds all threads taken.
    WorkerPool(std::size_t mostThreads, std::function<void()> onCrowded)
        : mostThreads_(mostThreads), onCrowded_(std::move(onCrowded))
    {
    }
    ~WorkerPool() { finish(); }
    WorkerPool(WorkerPool&&) = delete;

    void run(Job job);

    /// Waits until every job is done. Bring no more.
    void finish();

private:
    void work();

    std::size_t mostThreads_;
    std::function<void()> onCrowded_;
    std::mutex mutex_; ///< guards all below
    std::condition_variable wake_;
    std::deque<Job> jobs_;
    std::vector<std::thread> threads_;
    std::size_t busy_ = 0;
    bool finishing_ = false;
};

} // namespace vorn::sandbox
