#pragma once

#include "Platform/Async/Async.h"

#include <memory>

namespace vorn {

class MainContext;

/// A running coroutine, cancelled when this handle is replaced or destroyed. Neither waits for the coroutine to unwind,
/// which happens later on its thread. Any error but `Cancelled` that leaves the coroutine is a programming error and
/// ends the process. Threads: the context's own.
class Task {
public:
    Task() = default;
    /// Begins `work` when the context next runs; a task cancelled before that never begins.
    Task(MainContext& context, Async<> work);
    ~Task() { cancel(); }
    Task(Task&& other) noexcept : job_(std::move(other.job_)) {}
    Task& operator=(Task&& other) noexcept
    {
        const Task replaced(std::move(*this));
        job_ = std::move(other.job_);
        return *this;
    }

    void cancel() noexcept;
    bool isRunning() const noexcept { return !job_.expired(); }

    /// Begins `work`, which is cancelled only by shutting down the context.
    static void detached(MainContext& context, Async<> work);
    static void detached(const std::shared_ptr<detail::WorkQueue>& queue, Async<> work);

private:
    static std::shared_ptr<detail::Job> begin(const std::shared_ptr<detail::WorkQueue>& queue, Async<> work);

    std::weak_ptr<detail::Job> job_;
};

} // namespace vorn
