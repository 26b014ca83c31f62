#include "Platform/Async/WorkQueue.h"

#include "Platform/Async/Job.h"
#include "Platform/Base/Fatal.h"

#include <string>
#include <utility>
#include <vector>

namespace vorn::detail {

void WorkQueue::post(std::function<void()> work)
{
    {
        const std::lock_guard lock(mutex_);
        if (closed_) return;
        work_.push_back(std::move(work));
        posted_.notify_one();
        if (std::exchange(wakeUpCalled_, true)) return;
    }
    const std::lock_guard lock(hookMutex_);
    if (wakeUp_) wakeUp_();
}

bool WorkQueue::runOne() noexcept
{
    std::function<void()> work;
    {
        const std::lock_guard lock(mutex_);
        if (work_.empty()) return false;
        work = std::move(work_.front());
        work_.pop_front();
    }
    work(); // unlocked: it may post, and may run a nested loop over this queue
    return true;
}

std::size_t WorkQueue::size() const
{
    const std::lock_guard lock(mutex_);
    return work_.size();
}

void WorkQueue::expectWakeUp()
{
    const std::lock_guard lock(mutex_);
    wakeUpCalled_ = false;
}

void WorkQueue::waitForWork()
{
    std::unique_lock lock(mutex_);
    posted_.wait(lock, [this] { return !work_.empty(); });
}

bool WorkQueue::waitForWork(std::chrono::steady_clock::time_point end)
{
    std::unique_lock lock(mutex_);
    return posted_.wait_until(lock, end, [this] { return !work_.empty(); });
}

void WorkQueue::close()
{
    requireOwnThread("close it");
    std::deque<std::function<void()>> dropped; // destroyed unlocked: their captures may post
    {
        const std::lock_guard lock(mutex_);
        closed_ = true;
        dropped.swap(work_);
    }
    {
        const std::lock_guard lock(hookMutex_);
        wakeUp_ = nullptr;
    }
    const auto ended = std::exchange(jobs_, {}); // destroys the frames of those that still wait
}

bool WorkQueue::adopt(const std::shared_ptr<Job>& job)
{
    requireOwnThread("start a task");
    // Destroying a job may start another, which would keep the queue, and itself, alive forever.
    if (closed_) return false;
    jobs_.insert(job);
    return true;
}

void WorkQueue::cancelJobs()
{
    const std::vector<std::shared_ptr<Job>> running(jobs_.begin(), jobs_.end());
    for (const auto& job : running) job->cancel();
}

void WorkQueue::requireOwnThread(const char* what) const
{
    if (std::this_thread::get_id() != owner_) fatalError(std::string("only a queue's own thread may ") + what);
}

} // namespace vorn::detail
