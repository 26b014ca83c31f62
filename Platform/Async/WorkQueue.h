#pragma once

#include <chrono>
#include <condition_variable>
#include <deque>
#include <functional>
#include <memory>
#include <mutex>
#include <thread>
#include <unordered_set>

namespace vorn::detail {

class Job;

/// Functions in the order they were posted, and the jobs of the thread that runs them. Outlives its `MainContext`: once
/// closed it drops what is posted.
class WorkQueue {
public:
    explicit WorkQueue(std::function<void()> wakeUp) : wakeUp_(std::move(wakeUp)) {}

    void post(std::function<void()> work); ///< any thread

    bool runOne() noexcept; ///< false when empty; an exception out of the work ends the process
    std::size_t size() const;
    /// Makes the next post call the hook again.
    void expectWakeUp();
    void waitForWork();
    /// The same until `end` at most; returns whether there is work.
    bool waitForWork(std::chrono::steady_clock::time_point end);

    // Everything below: only on the thread that constructed the queue. A pool's threads may use everything above.
    void close();

    bool adopt(const std::shared_ptr<Job>& job); ///< false once closed: the job is not kept
    void release(const std::shared_ptr<Job>& job) { jobs_.erase(job); }
    void cancelJobs();
    std::size_t jobCount() const noexcept { return jobs_.size(); }

    /// Ends the process, instead of racing, when called on a thread other than the queue's own.
    void requireOwnThread(const char* what) const;

private:
    std::thread::id owner_ = std::this_thread::get_id();
    std::unordered_set<std::shared_ptr<Job>> jobs_;

    mutable std::mutex mutex_; ///< guards the members below up to `closed_`
    std::condition_variable posted_;
    std::deque<std::function<void()>> work_;
    bool wakeUpCalled_ = false;
    bool closed_ = false; ///< changed only on the queue's own thread, which may read it unlocked

    std::mutex hookMutex_; ///< held while the hook runs, so that `close` waits: what the hook uses is destroyed next
    std::function<void()> wakeUp_;
};

} // namespace vorn::detail
