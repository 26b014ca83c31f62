#include "Tools/Support/InterruptWatch.h"

#include <pthread.h>
#include <unistd.h>

namespace vorn {
namespace {

/// Wakes the waiting thread when the watch ends. It is sent to that thread alone.
constexpr int wakeUp = SIGUSR1;

} // namespace

InterruptWatch::InterruptWatch()
{
    sigemptyset(&awaited_);
    for (const int number : {SIGINT, SIGTERM, SIGHUP, wakeUp}) sigaddset(&awaited_, number);
    pthread_sigmask(SIG_BLOCK, &awaited_, nullptr);
    thread_ = std::thread([this] { waitForSignals(); });
}

InterruptWatch::~InterruptWatch()
{
    pthread_kill(thread_.native_handle(), wakeUp);
    thread_.join();
}

void InterruptWatch::waitForSignals()
{
    while (true) {
        int number = 0;
        if (sigwait(&awaited_, &number) != 0) continue;
        if (number == wakeUp) return;
        signal_ = number;
        cancel_.cancel();
        const std::lock_guard lock(mutex_);
        if (nothingOnDisk_) _exit(exitStatus());
    }
}

InterruptWatch::NothingOnDisk::NothingOnDisk(InterruptWatch& watch) : watch_(watch)
{
    const std::lock_guard lock(watch_.mutex_);
    watch_.nothingOnDisk_ = true;
}

InterruptWatch::NothingOnDisk::~NothingOnDisk()
{
    const std::lock_guard lock(watch_.mutex_);
    watch_.nothingOnDisk_ = false;
}

} // namespace vorn
