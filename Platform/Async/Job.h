#pragma once

#include <coroutine>
#include <memory>
#include <utility>

/// What runs a coroutine. Nothing here is for use outside this folder: `Task`, `Async` and `suspend` are the interface.
namespace vorn::detail {

class WorkQueue;

/// The leaf on which a job waits: the one place where a running coroutine gives its thread away.
class Wait {
public:
    /// The job was cancelled. Called on the job's own thread, at most once.
    virtual void interrupt() = 0;

protected:
    ~Wait() = default;
};

/// One running coroutine with everything it awaits: a single line of work, which waits on one leaf at a time.
/// Owned by its queue until it ends; everybody else holds it weakly. Threads: the queue's own.
class Job : public std::enable_shared_from_this<Job> {
public:
    /// Takes over `body`, a coroutine that has not begun.
    Job(std::shared_ptr<WorkQueue> queue, std::coroutine_handle<> body) : queue_(std::move(queue)), body_(body) {}
    ~Job();
    Job(Job&&) = delete;

    /// Hands `job` to its queue, which begins it later: never inline, so that whoever starts a job finishes first.
    static void start(const std::shared_ptr<Job>& job);

    /// From now on every await throws `Cancelled`, also the one whose result is on its way. A job that has not begun
    /// never does.
    void cancel();

    bool isCancelled() const noexcept { return cancelled_; }
    /// Whether awaits throw: cancelled, and not inside of work that must be finished.
    bool isInterrupted() const noexcept { return cancelled_ && shields_ == 0; }
    void shield() noexcept { ++shields_; }
    void unshield() noexcept { --shields_; }

    /// The coroutine at `at` waits on `leaf` for `answer`, which names this one wait: the leaf's own address does not,
    /// as a loop puts every leaf into the same place of the frame.
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
