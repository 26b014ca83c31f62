#pragma once

#include "Platform/Async/Suspend.h"

#include <functional>
#include <memory>
#include <type_traits>

namespace vorn {

/// Runs work that blocks or takes long to compute. Replaceable in tests. Threads: any may post.
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
    std::exception_ptr error; // handed over only after this thread has left its catch block
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

/// Runs `work(const CancelFlag&)` on `executor` and returns or throws what it does. Cancelling the task raises the
/// flag; the await ends only when `work` has ended, so `work` may use what the awaiting coroutine owns. Long-running
/// work must check the flag often.
template <class Work, class Result = std::invoke_result_t<Work&, const CancelFlag&>>
Async<Result> onBackground(BackgroundExecutor* executor, Work work)
{
    auto cancel = std::make_shared<CancelFlag>();
    co_return co_await suspend<Result>(
        [executor, cancel, &work](Resume<Result> resume) -> CancelAction {
            // By reference: what `work` owns must not be destroyed on another thread while the coroutine runs on.
            executor->post(
                [cancel, &work, resume = std::move(resume)] { detail::runAndResume<Result>(work, *cancel, resume); });
            return [cancel] { cancel->cancel(); };
        },
        OnCancel::waitForResult);
}

/// As `onBackground`, but a cancelled task stops waiting at once while `work` runs on, so `work` must own all that it
/// uses. For work that cannot be interrupted.
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
