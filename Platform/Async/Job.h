#pragma once

#include <coroutine>
#include <memory>
#include <utility>

/// Runs coroutines. Internal to this folder; the interface is `Task`, `Async` and `suspend`.
namespace vorn::detail {

class WorkQueue;

/// The awaiter on which a job is suspended.
class Wait {
public:
    /// The job was cancelled. Called on the job's own thread, at most once.
    virtual void interrupt() = 0;

protected:
    ~Wait() = default;
};

/// One running coroutine with everything it awaits; suspended on at most one leaf at a time.
/// Owned by its queue until it ends; everything else holds it weakly. Threads: the queue's own.
class Job : public std::enable_shared_from_this<Job> {
public:
    /// Takes over `body`, a coroutine that has not begun.
    Job(std::shared_ptr<WorkQueue> queue, std::coroutine_handle<> body) : queue_(std::move(queue)), body_(body) {}
    ~Job();
    Job(Job&&) = delete;

    /// Hands `job` to its queue, which begins it later, never inside this call.
    static void start(const std::shared_ptr<Job>& job);

    /// From now on every await throws `Cancelled`, even one whose result has already been posted. A job that has not
    /// begun never begins.
    void cancel();

    bool isCancelled() const noexcept { return cancelled_; }
    /// Whether awaits throw: cancelled and not shielded.
    bool isInterrupted() const noexcept { return cancelled_ && shields_ == 0; }
    void shield() noexcept { ++shields_; }
    void unshield() noexcept { --shields_; }

    /// Suspends the coroutine at `at` on `leaf`. `answer` identifies this wait; the address of the leaf does not, since
    /// the awaiters of a loop share one address.
    void beginWait(Wait* leaf, const void* answer, std::coroutine_handle<> at) noexcept;
    void endWait() noexcept;
    bool waitsFor(const void* answer) const noexcept { return answer_ == answer; }
    void wake();

    const std::shared_ptr<WorkQueue>& queue() const noexcept { return queue_; }

private:
    void begin();
    void resume(std::coroutine_handle<> at);

    std::shared_ptr<WorkQueue> queue_;
    std::coroutine_handle<> body_;
    std::coroutine_handle<> waiting_;
    Wait* leaf_ = nullptr;
    const void* answer_ = nullptr;
    int shields_ = 0;
    bool cancelled_ = false;
};

/// What the frames of all coroutines have in common.
struct PromiseBase {
    Job* job = nullptr; ///< set when the coroutine is awaited or started; the job outlives the frame
    std::coroutine_handle<> continuation;

    struct FinalAwaiter {
        bool await_ready() const noexcept { return false; }
        template <class Promise>
        std::coroutine_handle<> await_suspend(std::coroutine_handle<Promise> ended) const noexcept
        {
            const std::coroutine_handle<> next = ended.promise().continuation;
            return next ? next : std::noop_coroutine();
        }
        void await_resume() const noexcept {}
    };

    std::suspend_always initial_suspend() const noexcept { return {}; }
    FinalAwaiter final_suspend() const noexcept { return {}; }
};

} // namespace vorn::detail
