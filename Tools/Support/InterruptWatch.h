#pragma once

#include "Platform/Base/CancelFlag.h"

#include <atomic>
#include <csignal>
#include <mutex>
#include <string>
#include <thread>

namespace vorn {

/// Turns SIGINT, SIGTERM and SIGHUP into a cancel, so that the work unwinds and deletes its files.
/// Signals that the program was started to ignore stay ignored. A write beyond the limit of a file's size fails from
/// now on, as on a full disk, instead of ending the process with its files in place. Make one in `main` before any
/// other thread starts: it blocks these signals, and threads inherit that.
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
        /// `lastWords` go to standard error when a signal ends the program.
        NothingOnDisk(InterruptWatch& watch, std::string lastWords);
        ~NothingOnDisk();
        NothingOnDisk(NothingOnDisk&&) = delete;

    private:
        InterruptWatch& watch_;
    };

private:
    void waitForSignals();
    [[noreturn]] void leave() const;

    CancelFlag cancel_;
    std::atomic<int> signal_ = 0;
    std::atomic<bool> ending_ = false;
    std::mutex mutex_; ///< guards the two below; held while the process is ended
    bool nothingOnDisk_ = false;
    std::string lastWords_;
    sigset_t awaited_{};
    std::thread thread_;
};

} // namespace vorn
