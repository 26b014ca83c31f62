#pragma once

#include "Platform/Async/Suspend.h"

#include <functional>
#include <memory>
#include <type_traits>

namespace vorn {

/// A few threads for work that blocks or computes for long. Threads: any may post.
class BackgroundPool {
public:
    explicit BackgroundPool(unsigned threads = 2);
    /// Waits for what is running; what has not begun is dropped.
    ~BackgroundPool();
    BackgroundPool(BackgroundPool&&) = delete;

    /// `work` must not throw.
    void post(std::function<void()> work);

private:
    struct Threads;
    std::unique_ptr<Threads> threads_;
};

namespace detail {

template <class Result, class Work>
void runAndResume(Work& work, const CancelFlag& cancel, const Resume<Result>& resume)
{
    std::exception_ptr error; // this thread lets go of what it caught before the coroutine goes on with it
    try {
        cancel.check();
        if constexpr (std::is_void_v<Result>) {
            work(cancel);
            resume();
        } else {
            resume(work(cancel));
        }
    } catch (...) {
        error = std::current_exception();
    }
    if (error) resume.fail(std::move(error));
}

} // namespace detail

/// Runs `work(const CancelFlag&)` on `pool` and gives what it returns or throws. A cancelled task raises the flag and
/// goes on only once `work` has ended, so that it may use what the awaiting coroutine owns: long work looks at the flag
/// often.
template <class Work, class Result = std::invoke_result_t<Work&, const CancelFlag&>>
Async<Result> onBackground(BackgroundPool* pool, Work work)
{
    auto cancel = std::make_shared<CancelFlag>();
    co_return co_await suspend<Result>(
        [pool, cancel, &work](Resume<Result> resume) -> CancelAction {
            // `work` stays here: what it holds must not die on the pool's thread while the coroutine already goes on.
            pool->post(
                [cancel, &work, resume = std::move(resume)] { detail::runAndResume<Result>(work, *cancel, resume); });
            return [cancel] { cancel->cancel(); };
        },
        OnCancel::waitForResult);
}

} // namespace vorn
