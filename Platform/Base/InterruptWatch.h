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

/// Turns SIGINT, SIGTERM and SIGHUP into a cancellation, so that work unwinds and deletes its files. Signals ignored at
/// the start stay ignored. SIGXFSZ is ignored: a write beyond the file size limit fails as on a full disk. Construct it
/// in `main` before any thread starts, as threads must inherit the blocked signals.
class InterruptWatch {
public:
    /// For programs that may wait forever and keep nothing on disk. A program still running `grace` after the first
    /// signal, or when another signal comes, ends at once, with `lastWords` on standard error.
    struct Deadline {
        std::function<void()> onInterrupt; ///< called once, on the watch's thread, on the first signal
        std::chrono::milliseconds grace;
        std::string lastWords;
    };

    InterruptWatch() : InterruptWatch(std::nullopt) {}
    explicit InterruptWatch(std::optional<Deadline> deadline);
    ~InterruptWatch();
    InterruptWatch(InterruptWatch&&) = delete;

    const CancelFlag& cancelFlag() const noexcept { return cancel_; }

    /// The shell's exit status for a program that the signal ended: 128 plus the signal's number.
    int exitStatus() const noexcept { return 128 + signal_.load(); }

    /// While it lives, a signal ends the process at once. For work that cannot be cancelled and keeps nothing on disk.
    class NothingOnDisk {
    public:
        /// `lastWords` are written to standard error when a signal ends the process.
        NothingOnDisk(InterruptWatch& watch, std::string lastWords);
        ~NothingOnDisk();
        NothingOnDisk(NothingOnDisk&&) = delete;

    private:
        InterruptWatch& watch_;
    };

    /// While it lives, SIGINT is ignored: it is meant for the child process that owns the terminal.
    class InterruptIgnored {
    public:
        explicit InterruptIgnored(InterruptWatch& watch) : watch_(watch) { watch_.ignoresInterrupt_ = true; }
        ~InterruptIgnored() { watch_.ignoresInterrupt_ = false; }
        InterruptIgnored(InterruptIgnored&&) = delete;

    private:
        InterruptWatch& watch_;
    };

private:
    void waitForSignals();
    void onSignal(int number);
    void waitOut(const Deadline& deadline);
    bool isAwaitedSignalPending() const;
    [[noreturn]] void leave(const std::string& lastWords) const;

    CancelFlag cancel_;
    std::atomic<int> signal_ = 0;
    std::atomic<bool> ignoresInterrupt_ = false;
    std::optional<Deadline> deadline_;
    std::mutex mutex_; ///< guards the members below up to `lastWords_`; held while ending the process
    std::condition_variable ended_;
    bool ending_ = false;
    bool nothingOnDisk_ = false;
    std::string lastWords_;
    sigset_t awaited_{};
    std::thread thread_;
};

} // namespace vorn
