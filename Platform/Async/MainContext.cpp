#include "Platform/Async/MainContext.h"

namespace vorn {

MainContext::MainContext(std::function<void()> wakeUp) : queue_(std::make_shared<detail::WorkQueue>(std::move(wakeUp)))
{
}

MainContext::~MainContext()
{
    queue_->close();
}

void MainContext::runPending()
{
    queue_->expectWakeUp();
    for (std::size_t left = queue_->size(); left > 0 && queue_->runOne(); --left) {
    }
}

bool MainContext::runUntilIdle()
{
    queue_->expectWakeUp();
    bool any = false;
    while (queue_->runOne()) any = true;
    return any;
}

void MainContext::runUntil(const std::function<bool()>& done)
{
    while (!done()) {
        queue_->waitForWork();
        queue_->runOne();
    }
    queue_->expectWakeUp();
}

void MainContext::shutDown()
{
    queue_->cancelJobs();
    runUntil([this] { return runningTasks() == 0; });
}

bool MainContext::shutDown(std::chrono::milliseconds limit)
{
    const auto end = std::chrono::steady_clock::now() + limit;
    queue_->cancelJobs();
    // One at a time: work that keeps posting must not outlast the limit.
    while (runningTasks() > 0 && std::chrono::steady_clock::now() < end && queue_->waitForWork(end)) queue_->runOne();
    queue_->expectWakeUp();
    return runningTasks() == 0;
}

} // namespace vorn
