#include "Tools/Support/InterruptWatch.h"

#include <pthread.h>
#include <unistd.h>

namespace vorn {
namespace {

/// Wakes the waiting thread when the watch ends. It is sent to that thread alone.
constexpr int wakeUp = SIGUSR1;

/// Whether whoever started the program wants it to go on, as `nohup` and shells do for what runs in the background.
bool isIgnored(int number)
{
    struct sigaction current{};
    return sigaction(number, nullptr, &current) == 0 && current.sa_handler == SIG_IGN;
}

} // namespace

InterruptWatch::InterruptWatch()
{
    sigemptyset(&awaited_);
    sigaddset(&awaited_, wakeUp);
    for (const int number : {SIGINT, SIGTERM, SIGHUP}) {
        if (!isIgnored(number)) sigaddset(&awaited_, number);
    }
    std::signal(SIGXFSZ, SIG_IGN);
    pthread_sigmask(SIG_BLOCK, &awaited_, nullptr);
    thread_ = std::thread([this] { waitForSignals(); });
}

InterruptWatch::~InterruptWatch()
{
    ending_ = true;
    pthread_kill(thread_.native_handle(), wakeUp);
    thread_.join();
}

void InterruptWatch::waitForSignals()
{
    while (true) {
        int number = 0;
        if (sigwait(&awaited_, &number) != 0) continue;
        if (number == wakeUp && !ending_) continue; // sent by somebody else
        if (number == wakeUp) return;
        signal_ = number;
        cancel_.cancel();
        const std::lock_guard lock(mutex_);
        if (nothingOnDisk_) leave();
    }
}

void InterruptWatch::leave() const
{
    [[maybe_unused]] const auto written = write(STDERR_FILENO, lastWords_.data(), lastWords_.size());
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
