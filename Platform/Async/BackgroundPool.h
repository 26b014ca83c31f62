#pragma once

#include "Platform/Async/Suspend.h"

#include <memory>

namespace vorn {

/// A few threads for work that blocks or computes for long. Threads: any may post.
class BackgroundPool {
public:
    explicit BackgroundPool(unsigned threads = 2);
    /// Waits for what is running; what has not begun is dropped.
    ~BackgroundPool();
    BackgroundPool(BackgroundPool&&) = delete;

    void post(std::function<void()> work);

private:
    struct Threads;
    std::unique_ptr<Threads> threads_;
};

namespace detail {

template <class Result, class Work>
void runAndResume(const Work& work, const CancelFlag& cancel, const Resume<Result>& resume)
{
    try {
        cancel.check();
        if constexpr (std::is_void_v<Result>) {
            work(cancel);
            resume();
        } else {
            resume(work(cancel));
        }
    } catch (...) {
        resume.fail(std::current_exception());
    }
}

} // namespace detail

/// Runs `work(const CancelFlag&)` on `pool` and gives what it returns or throws. A cancelled task raises the flag and
/// goes on only once `work` has ended, so that it may use what the awaiting coroutine owns: long work looks at the flag
/// often.
template <class Work, class Result = std::invoke_result_t<Work, const CancelFlag&>>
Async<Result> onBackground(BackgroundPool* pool, Work work)
{
    auto cancel = std::make_shared<CancelFlag>();
    co_return co_await suspend<Result>(
        [pool, cancel, &work](Resume<Result> resume) -> CancelAction {
            pool->post([cancel, work = std::move(work), resume = std::move(resume)] {
                detail::runAndResume<Result>(work, *cancel, resume);
            });
            return [cancel] { cancel->cancel(); };
        },
        OnCancel::waitForResult);
}

} // namespace vorn
