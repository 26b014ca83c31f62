#pragma once

#include "Platform/Async/Async.h"
#include "Platform/Async/WorkQueue.h"
#include "Platform/Base/CancelFlag.h"

#include <condition_variable>
#include <mutex>

namespace vorn {

/// Stops what a suspended coroutine waits for. Called on the coroutine's thread, at most once.
using CancelAction = std::function<void()>;

/// When a cancelled await ends.
enum class OnCancel {
    leave,         ///< at once; the operation ends later, and its result is dropped
    waitForResult, ///< when the operation has ended, as it may use what the coroutine owns
};

namespace detail {

/// Receives the result of one await, from any thread. Only the first result counts.
template <class T>
class Mailbox : public std::enable_shared_from_this<Mailbox<T>> {
public:
    Mailbox(std::weak_ptr<Job> job, std::shared_ptr<WorkQueue> queue) : job_(std::move(job)), queue_(std::move(queue))
    {
    }

    bool fail(std::exception_ptr error) { return settle(Outcome<T>(std::in_place_index<2>, std::move(error))); }

    /// The last `Resume` is gone: the await ends as cancelled.
    void abandon()
    {
        {
            const std::lock_guard lock(mutex_);
            if (settled_) return; // the usual case: saves making an exception
        }
        fail(std::make_exception_ptr(Cancelled()));
    }

    bool settle(Outcome<T> outcome)
    {
        {
            const std::lock_guard lock(mutex_);
            if (settled_) return false;
            settled_ = true;
            outcome_ = std::move(outcome);
            ended_.notify_all();
        }
        queue_->post([box = this->shared_from_this()] { box->wake(); });
        return true;
    }

    void waitUntilSettled()
    {
        std::unique_lock lock(mutex_);
        ended_.wait(lock, [this] { return settled_; });
    }

    /// Takes the result out, on the coroutine's thread, once woken: the mailbox may be destroyed later on another.
    T take()
    {
        auto taken = std::exchange(outcome_, {});
        return takeFrom<T>(taken);
    }

private:
    void wake()
    {
        const auto job = job_.lock();
        if (job && job->waitsFor(this)) job->wake();
    }

    std::weak_ptr<Job> job_;
    std::shared_ptr<WorkQueue> queue_;
    std::mutex mutex_; ///< guards `settled_` and `outcome_` until the coroutine is woken
    std::condition_variable ended_;
    bool settled_ = false;
    Outcome<T> outcome_;
};

} // namespace detail

/// Ends one await with a value or an error. Copyable. Threads: any; only the first call through any of the copies
/// counts. Destroying the last copy without a call ends the await as cancelled.
template <class T>
class Resume {
public:
    explicit Resume(std::shared_ptr<detail::Mailbox<T>> box) : last_(std::make_shared<Last>(std::move(box))) {}

    template <class... Value>
    void operator()(Value&&... value) const
    {
        last_->box->settle(detail::Outcome<T>(std::in_place_index<1>, std::forward<Value>(value)...));
    }
    void fail(std::exception_ptr error) const { last_->box->fail(std::move(error)); }

private:
    struct Last {
        explicit Last(std::shared_ptr<detail::Mailbox<T>> to) : box(std::move(to)) {}
        ~Last() { box->abandon(); }
        Last(Last&&) = delete;
        std::shared_ptr<detail::Mailbox<T>> box;
    };
    std::shared_ptr<Last> last_;
};

namespace detail {

template <class T, class Start>
class SuspendAwaiter final : public Wait {
public:
    SuspendAwaiter(Start start, OnCancel onCancel) : start_(std::move(start)), onCancel_(onCancel) {}
    SuspendAwaiter(SuspendAwaiter&&) = delete;
    /// If it is still waiting, the job is being destroyed.
    ~SuspendAwaiter()
    {
        if (box_ && job_->waitsFor(box_.get())) {
            interrupt();
            job_->endWait();
            if (onCancel_ == OnCancel::waitForResult) box_->waitUntilSettled();
        }
    }

    bool await_ready() const noexcept { return false; }

    template <class Promise>
    bool await_suspend(std::coroutine_handle<Promise> at)
    {
        job_ = at.promise().job;
        if (job_->isInterrupted()) return false;
        box_ = std::make_shared<Mailbox<T>>(job_->weak_from_this(), job_->queue());
        job_->beginWait(this, box_.get(), at);
        try {
            cancelAction_ = start_(Resume<T>(box_));
        } catch (...) {
            job_->endWait();
            throw; // into the coroutine, at this await
        }
        if (job_->isInterrupted()) stop(); // cancelled inside `start`, before there was an action
        return true;
    }

    T await_resume()
    {
        if (job_->isInterrupted()) throw Cancelled();
        return box_->take();
    }

    void interrupt() override
    {
        const bool leaves = onCancel_ == OnCancel::leave;
        if (leaves && !box_->fail(std::make_exception_ptr(Cancelled()))) return; // a result has been posted
        stop();
    }

private:
    void stop()
    {
        if (cancelAction_) std::exchange(cancelAction_, nullptr)();
    }

    Start start_;
    OnCancel onCancel_;
    Job* job_ = nullptr;
    std::shared_ptr<Mailbox<T>> box_;
    CancelAction cancelAction_;
};

} // namespace detail

/// The primitive under every wait: `co_await suspend<T>(start)` calls `start(Resume<T>)`, which begins an operation and
/// returns how to stop it (null if it cannot be stopped), and suspends until the `Resume` is called. What `start`
/// throws is thrown here; `start` must not run the queue. The cancel action may be called after the `Resume`. The
/// coroutine resumes from its queue, never inside `Resume` or a cancellation.
template <class T, class Start>
auto suspend(Start start, OnCancel onCancel = OnCancel::leave)
{
    return detail::SuspendAwaiter<T, Start>(std::move(start), onCancel);
}

} // namespace vorn
