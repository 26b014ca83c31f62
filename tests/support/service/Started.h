#pragma once

#include "Platform/Async/MainContext.h"

#include <exception>
#include <memory>
#include <optional>
#include <utility>

namespace vorn::testing {

/// Work that has been started and not awaited, so that the test decides what happens meanwhile. Cancelled when it is
/// destroyed. Threads: the context's own.
template <class T>
class Started {
public:
    Started(MainContext& context, Async<T> work)
        : outcome_(std::make_shared<Outcome>()), task_(context, keep(std::move(work), outcome_))
    {
    }

    bool hasEnded() const { return outcome_->value || outcome_->error; }
    bool hasFailed() const { return outcome_->error != nullptr; }

    /// Runs `context` until the work has ended, and returns or throws its outcome.
    T result(MainContext& context) const
    {
        context.runUntil([this] { return hasEnded(); });
        return result();
    }
    /// The outcome of the work.
    T result() const
    {
        if (outcome_->error) std::rethrow_exception(outcome_->error);
        return outcome_->value.value();
    }

    void cancel() { task_.cancel(); }

private:
    struct Outcome {
        std::optional<T> value;
        std::exception_ptr error;
    };

    static Async<> keep(Async<T> work, std::shared_ptr<Outcome> outcome)
    {
        try {
            outcome->value = co_await std::move(work);
        } catch (...) {
            outcome->error = std::current_exception();
        }
    }

    std::shared_ptr<Outcome> outcome_;
    Task task_;
};

/// The `Error` with which `started` has ended; none if it has not failed. Passes other errors through.
template <class Error, class T>
std::optional<Error> errorOf(const Started<T>& started)
{
    try {
        if (started.hasFailed()) started.result();
    } catch (const Error& error) {
        return error;
    }
    return std::nullopt;
}

/// The `Error` that `work` throws; none if it succeeds. Passes other errors through.
template <class Error, class T>
std::optional<Error> errorOf(MainContext& context, Async<T> work)
{
    try {
        context.run(std::move(work));
    } catch (const Error& error) {
        return error;
    }
    return std::nullopt;
}

} // namespace vorn::testing
