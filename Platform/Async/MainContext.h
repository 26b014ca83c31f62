#pragma once

#include "Platform/Async/Async.h"
#include "Platform/Async/Task.h"
#include "Platform/Async/WorkQueue.h"

#include <chrono>
#include <functional>
#include <memory>

namespace vorn {

/// A thread's queue of work, and the tasks that run on it: the thread that makes it is its own. Whatever loop that
/// thread has drives it: a window's event loop, `runUntil` in a program without one, a test by hand. Threads: `post`
/// any; everything else its own.
class MainContext {
public:
    /// `wakeUp` is called, on any thread, when work arrives that `runPending` should be called for: once until then,
    /// and never after the context is gone. It only asks for that call; it must not make it, nor post.
    explicit MainContext(std::function<void()> wakeUp = {});
    /// Drops what is left. Tasks should have been ended before with `shutDown`: those that still wait are destroyed
    /// where they stand, without running their clean-up.
    ~MainContext();
    MainContext(MainContext&&) = delete;

    /// `work` must not throw.
    void post(std::function<void()> work) { queue_->post(std::move(work)); }

    /// Runs what is queued now; what that posts waits for the next call (and calls `wakeUp`), so that an event loop
    /// stays alive. May be called from inside of work that it runs.
    void runPending();
    /// Runs until nothing is queued, and gives whether there was anything.
    bool runUntilIdle();
    /// Runs work as it arrives, and sleeps in between, until `done` says so.
    void runUntil(const std::function<bool()>& done);
    /// Runs `work` to its end, and everything else meanwhile.
    template <class T>
    T run(Async<T> work)
    {
        auto outcome = std::make_shared<detail::Outcome<T>>();
        const Task task(*this, deliver<T>(std::move(work), outcome));
        runUntil([&outcome] { return outcome->index() != 0; });
        return detail::takeFrom<T>(*outcome);
    }

    std::size_t runningTasks() const noexcept { return queue_->jobCount(); }
    /// Cancels every task and runs until none is left. Not from inside of a task, which would wait for itself. Tasks
    /// that clean-up begins meanwhile are not cancelled.
    /// Sets no limit to the time this takes: whatever a cancel does not end at once, shielded clean-up and work on a
    /// pool, needs a limit of its own (a request's `inactivityLimit`, a look at the `CancelFlag` every few
    /// milliseconds).
    void shutDown();
    /// The same for at most `limit`, and gives whether none is left. What is left goes with the context, where it
    /// stands.
    bool shutDown(std::chrono::milliseconds limit);

private:
    friend Task;

    template <class T>
    static Async<> deliver(Async<T> work, std::shared_ptr<detail::Outcome<T>> outcome)
    {
        try {
            if constexpr (std::is_void_v<T>) {
                co_await std::move(work);
                outcome->template emplace<1>();
            } else {
                outcome->template emplace<1>(co_await std::move(work));
            }
        } catch (...) {
            outcome->template emplace<2>(std::current_exception());
        }
    }

    std::shared_ptr<detail::WorkQueue> queue_;
};

} // namespace vorn
