#pragma once

#include "Platform/Async/MainContext.h"
#include "Platform/Async/Suspend.h"

#include <functional>
#include <mutex>
#include <utility>
#include <vector>

namespace vorn {

/// Lets concurrent callers share one run of the same work; a call after its end begins another run. Cancelling a caller
/// ends only its wait: the run goes on for the others. A run uses the thread of the caller that began it, whose context
/// must outlive the others' waits. Threads: any.
template <class T>
class SingleFlight {
public:
    using Work = std::function<Async<T>()>;

    /// Returns or throws what the shared run does. `work` is called only if no run is in progress.
    Async<T> run(Work work)
    {
        const auto state = state_;
        const auto queue = (co_await detail::CurrentJob())->queue();
        co_return co_await suspend<T>([&state, &queue, &work](const Resume<T>& resume) -> CancelAction {
            if (state->join(resume)) Task::detached(queue, fly(std::make_shared<Landing>(state), std::move(work)));
            return {};
        });
    }

private:
    struct State {
        /// Adds a waiter; returns whether it must begin the run.
        bool join(const Resume<T>& waiter)
        {
            const std::lock_guard lock(mutex);
            waiters.push_back(waiter);
            return !std::exchange(running, true);
        }

        /// Ends the run: the next caller begins another.
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

    /// Ends the run for all waiters when destroyed, even if its coroutine never began.
    class Landing {
    public:
        explicit Landing(std::shared_ptr<State> state) : state_(std::move(state)) {}
        ~Landing()
        {
            for (const auto& waiter : state_->end()) settle(waiter);
        }
        Landing(Landing&&) = delete;

        void succeed(T value) { outcome_.template emplace<1>(std::move(value)); }
        void fail(std::exception_ptr error) { outcome_.template emplace<2>(std::move(error)); }

    private:
        void settle(const Resume<T>& waiter) const
        {
            if (const auto* value = std::get_if<1>(&outcome_)) return waiter(*value);
            waiter.fail(std::get<2>(outcome_));
        }

        std::shared_ptr<State> state_;
        detail::Outcome<T> outcome_{std::in_place_index<2>, std::make_exception_ptr(Cancelled())};
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
