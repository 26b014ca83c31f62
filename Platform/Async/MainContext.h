#pragma once

#include "Platform/Async/Async.h"
#include "Platform/Async/Task.h"
#include "Platform/Async/WorkQueue.h"

#include <chrono>
#include <functional>
#include <memory>

namespace vorn {

/// The work queue of the thread that constructs it, and the tasks that run there. Driven by that thread's loop: an
/// event loop, `runUntil`, or a test. Threads: `post` any; everything else its own.
class MainContext {
public:
    /// `wakeUp` is called, on any thread, when work arrives: once, until the context runs its work; never after the
    /// context is destroyed. It must schedule `runPending` without calling it, and must not post.
    explicit MainContext(std::function<void()> wakeUp = {});
    /// Drops remaining work. Call `shutDown` first: tasks that are still suspended are destroyed without running their
    /// clean-up.
    ~MainContext();
    MainContext(MainContext&&) = delete;

    /// `work` must not throw.
    void post(std::function<void()> work) { queue_->post(std::move(work)); }

    /// Runs what is queued now. What that posts waits for the next call (and calls `wakeUp`), so that an event loop
    /// gets its turn. Reentrant.
    void runPending();
    /// Runs until nothing is queued; returns whether there was anything.
    bool runUntilIdle();
    /// Runs work as it arrives until `done` returns true.
    void runUntil(const std::function<bool()>& done);
    /// Runs `work` to its end, and other work meanwhile. Returns or throws what it does.
    template <class T>
    T run(Async<T> work)
    {
        auto outcome = std::make_shared<detail::Outcome<T>>();
        const Task task(*this, deliver<T>(std::move(work), outcome));
        runUntil([&outcome] { return outcome->index() != 0; });
        return detail::takeFrom<T>(*outcome);
    }

    std::size_t runningTasks() const noexcept { return queue_->jobCount(); }
    /// Cancels every task and runs until none is left. Must not be called from a task, which would wait for itself.
    /// Tasks started meanwhile, by clean-up, are not cancelled. May take arbitrarily long: shielded clean-up and
    /// background work need limits of their own (`inactivityLimit`, or checking the `CancelFlag` every few
    /// milliseconds).
    void shutDown();
    /// The same for at most `limit`; returns whether no task is left. Those left are destroyed with the context.
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
