#pragma once

#include "Platform/Async/Async.h"

#include <memory>

namespace vorn {

class MainContext;

/// A running coroutine that nobody awaits, cancelled when this handle is replaced or destroyed. Neither waits for the
/// coroutine: it unwinds when its thread comes to it. An error that leaves the coroutine, other than `Cancelled`, is a
/// mistake of the program and ends it.
/// Threads: the context's own.
class Task {
public:
    Task() = default;
    /// Begins `work` as soon as the context runs; a task cancelled before never begins.
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

    /// Begins `work`, which then ends on its own; only shutting down the context cancels it.
    static void detached(MainContext& context, Async<> work);
    static void detached(const std::shared_ptr<detail::WorkQueue>& queue, Async<> work);

private:
    static std::shared_ptr<detail::Job> begin(const std::shared_ptr<detail::WorkQueue>& queue, Async<> work);

    std::weak_ptr<detail::Job> job_;
};

} // namespace vorn
