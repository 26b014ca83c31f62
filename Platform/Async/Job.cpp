#include "Platform/Async/Job.h"

#include "Platform/Async/WorkQueue.h"

#include <utility>

namespace vorn::detail {

Job::~Job()
{
    if (body_) body_.destroy();
}

void Job::start(const std::shared_ptr<Job>& job)
{
    if (!job->queue_->adopt(job)) return;
    job->queue_->post([weak = std::weak_ptr(job)] {
        if (const auto begun = weak.lock()) begun->begin();
    });
}

void Job::cancel()
{
    queue_->requireOwnThread("cancel its tasks");
    if (std::exchange(cancelled_, true)) return;
    if (leaf_ != nullptr && shields_ == 0) leaf_->interrupt();
}

void Job::beginWait(Wait* leaf, const void* answer, std::coroutine_handle<> at) noexcept
{
    leaf_ = leaf;
    answer_ = answer;
    waiting_ = at;
}

void Job::endWait() noexcept
{
    leaf_ = nullptr;
    answer_ = nullptr;
}

void Job::wake()
{
    endWait();
    resume(std::exchange(waiting_, nullptr));
}

void Job::begin()
{
    if (cancelled_) {
        queue_->release(shared_from_this());
        return;
    }
    resume(body_);
}

void Job::resume(std::coroutine_handle<> at)
{
    const auto self = shared_from_this(); // the queue may release the job while it runs
    at.resume();
    if (body_.done()) queue_->release(self);
}

} // namespace vorn::detail
