#include "Platform/Base/InterruptWatch.h"

#include <algorithm>
#include <array>
#include <utility>

#include <pthread.h>
#include <unistd.h>

namespace vorn {
namespace {

/// Wakes the waiting thread when the watch ends; sent to that thread alone.
constexpr int wakeUp = SIGUSR1;

constexpr std::array endingSignals{SIGINT, SIGTERM, SIGHUP};
constexpr std::chrono::milliseconds betweenLooks{20};

/// Whether the signal was ignored at the start, as by `nohup` and by shells for background jobs.
bool isIgnored(int number)
{
    struct sigaction current{};
    return sigaction(number, nullptr, &current) == 0 && current.sa_handler == SIG_IGN;
}

} // namespace

InterruptWatch::InterruptWatch(std::optional<Deadline> deadline) : deadline_(std::move(deadline))
{
    sigemptyset(&awaited_);
    sigaddset(&awaited_, wakeUp);
    for (const int number : endingSignals) {
        if (!isIgnored(number)) sigaddset(&awaited_, number);
    }
    std::signal(SIGXFSZ, SIG_IGN);
    pthread_sigmask(SIG_BLOCK, &awaited_, nullptr);
    thread_ = std::thread([this] { waitForSignals(); });
}

InterruptWatch::~InterruptWatch()
{
    {
        const std::lock_guard lock(mutex_);
        ending_ = true;
        ended_.notify_all();
    }
    pthread_kill(thread_.native_handle(), wakeUp);
    thread_.join();
}

void InterruptWatch::waitForSignals()
{
    while (true) {
        int number = 0;
        if (sigwait(&awaited_, &number) != 0) continue;
        if (number != wakeUp) {
            if (number != SIGINT || !ignoresInterrupt_) onSignal(number);
            continue;
        }
        const std::lock_guard lock(mutex_);
        if (ending_) return; // otherwise another process sent it
    }
}

void InterruptWatch::onSignal(int number)
{
    signal_ = number;
    const bool isFirst = !cancel_.isCancelled();
    cancel_.cancel();
    if (isFirst && deadline_) {
        if (deadline_->onInterrupt) deadline_->onInterrupt();
        waitOut(*deadline_);
    }
    const std::lock_guard lock(mutex_);
    if (nothingOnDisk_) leave(lastWords_);
}

void InterruptWatch::waitOut(const Deadline& deadline)
{
    const auto end = std::chrono::steady_clock::now() + deadline.grace;
    std::unique_lock lock(mutex_);
    while (!ended_.wait_for(lock, betweenLooks, [this] { return ending_; })) {
        if (isAwaitedSignalPending() || std::chrono::steady_clock::now() >= end) leave(deadline.lastWords);
    }
}

bool InterruptWatch::isAwaitedSignalPending() const
{
    sigset_t pending{};
    sigpending(&pending);
    return std::ranges::any_of(endingSignals, [&](int number) {
        return sigismember(&awaited_, number) == 1 && sigismember(&pending, number) == 1;
    });
}

void InterruptWatch::leave(const std::string& lastWords) const
{
    [[maybe_unused]] const auto written = write(STDERR_FILENO, lastWords.data(), lastWords.size());
    _exit(exitStatus());
}

InterruptWatch::NothingOnDisk::NothingOnDisk(InterruptWatch& watch, std::string lastWords) : watch_(watch)
{
    const std::lock_guard lock(watch_.mutex_);
    watch_.nothingOnDisk_ = true;
    watch_.lastWords_ = std::move(lastWords);
}

InterruptWatch::NothingOnDisk::~NothingOnDisk()
{
    const std::lock_guard lock(watch_.mutex_);
    watch_.nothingOnDisk_ = false;
}

} // namespace vorn
