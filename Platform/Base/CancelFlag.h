#pragma once

#include <atomic>
#include <exception>

namespace vorn {

/// Thrown by work that was asked to stop.
class Cancelled : public std::exception {
public:
    const char* what() const noexcept override { return "cancelled"; }
};

/// Asks long-running work on another thread to stop soon. Threads: any; `cancel` may be called from a signal handler.
class CancelFlag {
public:
    void cancel() noexcept { raised_.store(true, std::memory_order_relaxed); }
    bool isCancelled() const noexcept { return raised_.load(std::memory_order_relaxed); }

    /// Throws `Cancelled` once the flag is raised.
    void check() const
    {
        if (isCancelled()) throw Cancelled();
    }

    /// A flag that is never raised.
    static const CancelFlag& never()
    {
        static const CancelFlag flag;
        return flag;
    }

private:
    std::atomic<bool> raised_ = false;
    static_assert(std::atomic<bool>::is_always_lock_free, "signal handlers may only touch lock-free atomics");
};

} // namespace vorn
