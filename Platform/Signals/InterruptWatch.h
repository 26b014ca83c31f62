#pragma once

#include "Platform/Base/CancelFlag.h"

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <csignal>
#include <functional>
#include <mutex>
#include <optional>
#include <string>
#include <thread>

namespace vorn {

/// Turns SIGINT, SIGTERM and SIGHUP into a cancel, so that the work unwinds and deletes its files.
/// Signals that the program was started to ignore stay ignored. A write beyond the limit of a file's size fails from
/// now on, as on a full disk, instead of ending the process with its files in place. Make one in `main` before any
/// other thread starts: it blocks these signals, and threads inherit that.
class InterruptWatch {
public:
    /// For programs that wait for others, who may never answer, and keep nothing on disk.
    struct Deadline {
        std::function<void()> onInterrupt; ///< called once, on the watch's own thread, when a signal has come
        std::chrono::milliseconds grace; ///< a watch that still lives so long after that, or when another signal comes,
        std::string lastWords;           ///< ends the program on the spot, and this goes to standard error
    };

    InterruptWatch() : InterruptWatch(std::nullopt) {}
    explicit InterruptWatch(std::optional<Deadline> deadline);
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
    void heed(int number);
    void waitOut(const Deadline& deadline);
    bool isAwaitedSignalPending() const;
    [[noreturn]] void leave(const std::string& lastWords) const;

    CancelFlag cancel_;
    std::atomic<int> signal_ = 0;
    std::optional<Deadline> deadline_;
    std::mutex mutex_; ///< guards what follows but the last two; held while the process is ended
    std::condition_variable ended_;
    bool ending_ = false;
    bool nothingOnDisk_ = false;
    std::string lastWords_;
    sigset_t awaited_{};
    std::thread thread_;
};

} // namespace vorn
