#pragma once

#include "Platform/Base/CancelFlag.h"

#include <atomic>
#include <csignal>
#include <mutex>
#include <thread>

namespace vorn {

/// Turns SIGINT, SIGTERM and SIGHUP into a cancel, so that the work unwinds and deletes its files.
/// Make one in `main` before any other thread starts: it blocks these signals, and threads inherit that.
class InterruptWatch {
public:
    InterruptWatch();
    ~InterruptWatch();
    InterruptWatch(InterruptWatch&&) = delete;

    const CancelFlag& cancelFlag() const noexcept { return cancel_; }

    /// The exit status of a program that the signal ended, as shells count: 128 and the signal's number.
    int exitStatus() const noexcept { return 128 + signal_.load(); }

    /// While it lives, the program keeps nothing on disk, so that a signal may end it on the spot. For work that cannot
    /// be told to stop.
    class NothingOnDisk {
    public:
        explicit NothingOnDisk(InterruptWatch& watch);
        ~NothingOnDisk();
        NothingOnDisk(NothingOnDisk&&) = delete;

    private:
        InterruptWatch& watch_;
    };

private:
    void waitForSignals();

    CancelFlag cancel_;
    std::atomic<int> signal_ = 0;
    std::mutex mutex_; ///< guards `nothingOnDisk_`; held while the process is ended for it
    bool nothingOnDisk_ = false;
    sigset_t awaited_{};
    std::thread thread_;
};

} // namespace vorn
