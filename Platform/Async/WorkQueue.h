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

/// Functions in the order they were posted, to be run on one thread, and the jobs that live on it. Outlives its
/// `MainContext` for those who still want to post; once closed it drops what they post.
class WorkQueue {
public:
    explicit WorkQueue(std::function<void()> wakeUp) : wakeUp_(std::move(wakeUp)) {}

    void post(std::function<void()> work); ///< any thread

    // All that follows: the queue's own thread, which is the one that made it.
    bool runOne() noexcept; ///< an exception would leave the rest without a wake-up: it ends the process
    std::size_t size() const;
    /// Forgets that the hook was called: the next post calls it again.
    void expectWakeUp();
    void waitForWork();
    /// The same, no longer than until `end`; gives whether there is any.
    bool waitForWork(std::chrono::steady_clock::time_point end);
    void close();

    bool adopt(const std::shared_ptr<Job>& job); ///< false once closed: the job is not kept
    void release(const std::shared_ptr<Job>& job) { jobs_.erase(job); }
    void cancelJobs();
    std::size_t jobCount() const noexcept { return jobs_.size(); }

    /// Ends the process when called from another thread than the queue's own: that would be a race.
    void requireOwnThread(const char* what) const;

private:
    std::thread::id owner_ = std::this_thread::get_id();
    std::unordered_set<std::shared_ptr<Job>> jobs_;

    mutable std::mutex mutex_; ///< guards what follows
    std::condition_variable posted_;
    std::deque<std::function<void()>> work_;
    bool wakeUpCalled_ = false;
    bool closed_ = false; ///< changed on the queue's own thread alone, which may read it unlocked

    std::mutex hookMutex_; ///< held while the hook runs: `close` waits for it, as the hook's loop dies next
    std::function<void()> wakeUp_;
};

} // namespace vorn::detail
