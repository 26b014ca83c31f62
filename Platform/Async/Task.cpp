#include "Platform/Async/Task.h"

#include "Platform/Async/MainContext.h"
#include "Platform/Base/CancelFlag.h"
#include "Platform/Base/Fatal.h"

#include <string>

namespace vorn {
namespace {

Async<> endQuietly(Async<> work)
{
    try {
        co_await std::move(work);
    } catch (const Cancelled&) { // NOLINT(bugprone-empty-catch): the regular end of a cancelled task
    } catch (const std::exception& error) {
        fatalError(std::string("a task ended with an unhandled error: ") + error.what());
    } catch (...) {
        fatalError("a task ended with an unhandled error");
    }
}

} // namespace

Async<> checkCancellation()
{
    if ((co_await detail::CurrentJob())->isInterrupted()) throw Cancelled();
}

std::shared_ptr<detail::Job> Task::begin(const std::shared_ptr<detail::WorkQueue>& queue, Async<> work)
{
    const auto body = endQuietly(std::move(work)).release();
    auto job = std::make_shared<detail::Job>(queue, body);
    body.promise().job = job.get();
    detail::Job::start(job);
    return job;
}

Task::Task(MainContext& context, Async<> work) : job_(begin(context.queue_, std::move(work)))
{
}

void Task::cancel() noexcept
{
    if (const auto job = job_.lock()) job->cancel();
}

void Task::detached(MainContext& context, Async<> work)
{
    begin(context.queue_, std::move(work));
}

void Task::detached(const std::shared_ptr<detail::WorkQueue>& queue, Async<> work)
{
    begin(queue, std::move(work));
}

} // namespace vorn
