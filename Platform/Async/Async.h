#pragma once

#include "Platform/Async/Job.h"
#include "Platform/Base/CancelFlag.h"

#include <exception>
#include <type_traits>
#include <utility>
#include <variant>

namespace vorn {

template <class T = void>
class Async;

namespace detail {

struct Nothing {};

template <class T>
using Stored = std::conditional_t<std::is_void_v<T>, Nothing, T>;

/// How a coroutine or a leaf await ended; `monostate` until then.
template <class T>
using Outcome = std::variant<std::monostate, Stored<T>, std::exception_ptr>;

template <class T>
T takeFrom(Outcome<T>& outcome)
{
    if (const auto* error = std::get_if<2>(&outcome)) std::rethrow_exception(*error);
    if constexpr (!std::is_void_v<T>) return std::move(std::get<1>(outcome));
}

template <class T>
struct PromiseOf : PromiseBase {
    Outcome<T> outcome;

    Async<T> get_return_object() noexcept;
    void unhandled_exception() noexcept { outcome.template emplace<2>(std::current_exception()); }
};

template <class T>
struct Promise : PromiseOf<T> {
    template <class U = T>
    void return_value(U&& value)
    {
        this->outcome.template emplace<1>(std::forward<U>(value));
    }
};

template <>
struct Promise<void> : PromiseOf<void> {
    void return_void() noexcept { outcome.emplace<1>(); }
};

} // namespace detail

/// An asynchronous computation: a coroutine that begins when it is awaited or made into a `Task`, and returns one `T`.
/// Its errors are thrown from the await. Once the task is cancelled, its current await and every later one throw
/// `Cancelled`, whatever the awaited work ends with: a cancelled coroutine never sees another error or a result.
/// Coroutines take their parameters by value, as a coroutine outlives the call that made it. A coroutine written as a
/// lambda loses its captures with the lambda object; write a function, or keep the lambda in a variable.
template <class T>
class [[nodiscard]] Async {
public:
    using promise_type = detail::Promise<T>; // NOLINT(readability-identifier-naming): the standard's name

    Async(Async&& other) noexcept : frame_(std::exchange(other.frame_, nullptr)) {}
    Async& operator=(Async&& other) noexcept
    {
        std::swap(frame_, other.frame_);
        return *this;
    }
    ~Async()
    {
        if (frame_) frame_.destroy();
    }

    struct Awaiter {
        std::coroutine_handle<promise_type> frame;

        bool await_ready() const noexcept { return false; }
        template <class Promise>
        std::coroutine_handle<> await_suspend(std::coroutine_handle<Promise> parent) const noexcept
        {
            frame.promise().job = parent.promise().job;
            frame.promise().continuation = parent;
            return frame;
        }
        T await_resume() const
        {
            if (frame.promise().job->isInterrupted()) throw Cancelled();
            return detail::takeFrom<T>(frame.promise().outcome);
        }
    };

    Awaiter operator co_await() && noexcept { return Awaiter{frame_}; }

    /// Hands the frame over to the caller, which then owns it.
    std::coroutine_handle<promise_type> release() && noexcept { return std::exchange(frame_, nullptr); }

private:
    friend detail::PromiseOf<T>;
    explicit Async(std::coroutine_handle<promise_type> frame) noexcept : frame_(frame) {}

    std::coroutine_handle<promise_type> frame_;
};

template <class T>
Async<T> detail::PromiseOf<T>::get_return_object() noexcept
{
    return Async<T>(std::coroutine_handle<Promise<T>>::from_promise(static_cast<Promise<T>&>(*this)));
}

namespace detail {

/// Returns the job that runs the awaiting coroutine; never suspends.
struct CurrentJob {
    Job* job = nullptr;

    bool await_ready() const noexcept { return false; }
    template <class P>
    bool await_suspend(std::coroutine_handle<P> at) noexcept
    {
        job = at.promise().job;
        return false;
    }
    Job* await_resume() const noexcept { return job; }
};

class Shield {
public:
    explicit Shield(Job& job) noexcept : job_(job) { job_.shield(); }
    ~Shield() { job_.unshield(); }
    Shield(Shield&&) = delete;

private:
    Job& job_;
};

} // namespace detail

/// Throws `Cancelled` once the task is cancelled. For long-running work without awaits.
Async<> checkCancellation();

/// Runs `work` to its end even in a cancelled task, for clean-up that must not be skipped. In a cancelled task the
/// await throws `Cancelled` once the work has ended.
template <class T>
Async<T> shielded(Async<T> work)
{
    const detail::Shield shield(*co_await detail::CurrentJob());
    co_return co_await std::move(work);
}

} // namespace vorn
