#pragma once

#include "Platform/Async/Suspend.h"

#include <functional>
#include <memory>
#include <type_traits>

namespace vorn {

/// Where work goes that blocks or computes for long. Tests hand in one that runs it when told. Threads: any may post.
class BackgroundExecutor {
public:
    virtual ~BackgroundExecutor() = default;

    /// `work` must not throw.
    virtual void post(std::function<void()> work) = 0;
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

/// Runs `work(const CancelFlag&)` on `executor` and gives what it returns or throws. A cancelled task raises the flag
/// and goes on only once `work` has ended, so that it may use what the awaiting coroutine owns: long work looks at the
/// flag often.
template <class Work, class Result = std::invoke_result_t<Work&, const CancelFlag&>>
Async<Result> onBackground(BackgroundExecutor* executor, Work work)
{
    auto cancel = std::make_shared<CancelFlag>();
    co_return co_await suspend<Result>(
        [executor, cancel, &work](Resume<Result> resume) -> CancelAction {
            // `work` stays here: what it holds must not die on another thread while the coroutine already goes on.
            executor->post(
                [cancel, &work, resume = std::move(resume)] { detail::runAndResume<Result>(work, *cancel, resume); });
            return [cancel] { cancel->cancel(); };
        },
        OnCancel::waitForResult);
}

/// As `onBackground`, but a cancelled task leaves at once, and `work` goes on without a caller: it must own all that it
/// uses. For what nothing can interrupt.
template <class Work, class Result = std::invoke_result_t<Work&>>
Async<Result> onBackgroundUnawaited(BackgroundExecutor* executor, Work work)
{
    const auto start = [executor, &work](Resume<Result> resume) -> CancelAction {
        executor->post(
            [work = [work = std::move(work)](const CancelFlag& /*cancel*/) { return work(); },
             resume = std::move(resume)] { detail::runAndResume<Result>(work, CancelFlag::never(), resume); });
        return {};
    };
    co_return co_await suspend<Result>(start);
}

} // namespace vorn
