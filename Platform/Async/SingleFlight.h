#pragma once

#include "Platform/Async/MainContext.h"
#include "Platform/Async/Suspend.h"

#include <mutex>
#include <vector>

namespace vorn {

/// Lets any number of callers share one run of the same work: who comes while it runs waits for its end, and the next
/// one after that begins anew. No caller owns the run: one that is cancelled stops waiting, and it goes on for the
/// others. It runs on the thread of the caller that began it, whose context must not be shut down before the others are
/// done. Threads: any.
template <class T>
class SingleFlight {
public:
    using Work = std::function<Async<T>()>;

    /// Gives what the shared run gives or throws. `work` is called only if no run is under way.
    Async<T> run(Work work)
    {
        const auto state = state_;
        const auto queue = (co_await detail::CurrentJob())->queue();
        co_return co_await suspend<T>([&state, &queue, &work](Resume<T> resume) -> CancelAction {
            if (state->join(resume)) Task::detached(queue, fly(std::make_shared<Landing>(state), std::move(work)));
            return {};
        });
    }

private:
    struct State {
        /// Adds a waiter, and gives whether it is the one that must begin the run.
        bool join(const Resume<T>& waiter)
        {
            const std::lock_guard lock(mutex);
            waiters.push_back(waiter);
            return !std::exchange(running, true);
        }

        /// The run is over, and whoever comes from now on begins another.
        std::vector<Resume<T>> end()
        {
            const std::lock_guard lock(mutex);
            running = false;
            return std::exchange(waiters, {});
        }

        std::mutex mutex; ///< guards the two below; never held across a suspension
        bool running = false;
        std::vector<Resume<T>> waiters;
    };

    /// Ends the run for everybody, also when its coroutine is destroyed before it could begin.
    class Landing {
    public:
        explicit Landing(std::shared_ptr<State> state) : state_(std::move(state)) {}
        ~Landing()
        {
            if (state_) fail(std::make_exception_ptr(Cancelled()));
        }
        Landing(Landing&&) = delete;

        void succeed(const T& value)
        {
            for (const auto& waiter : std::exchange(state_, nullptr)->end()) waiter(value);
        }
        void fail(const std::exception_ptr& error)
        {
            for (const auto& waiter : std::exchange(state_, nullptr)->end()) waiter.fail(error);
        }

    private:
        std::shared_ptr<State> state_;
    };

    static Async<> fly(std::shared_ptr<Landing> landing, Work work)
    {
        try {
            landing->succeed(co_await work());
        } catch (...) {
            landing->fail(std::current_exception());
        }
    }

    std::shared_ptr<State> state_ = std::make_shared<State>();
};

} // namespace vorn
