#pragma once

#include "Platform/Async/Async.h"
#include "Platform/Base/Dates.h"

#include <chrono>
#include <memory>

namespace vorn {

/// Tells the time and sleeps. Injected, so that tests control time.
/// Threads: any.
class Clock {
public:
    using Duration = std::chrono::nanoseconds;

    virtual ~Clock() = default;

    /// The calendar time, which the user or a time server may set.
    virtual Instant date() const = 0;
    /// Monotonic time since some fixed point; includes the time that the machine is asleep.
    virtual Duration now() const = 0;
    /// Returns when `now` has advanced by `duration`; at once if that is not positive.
    virtual Async<> sleep(Duration duration) = 0;
};

/// The system's clock, with one thread for its timers.
class SystemClock final : public Clock {
public:
    SystemClock();
    /// The thread ends once the last pending sleep has ended.
    ~SystemClock() override;
    SystemClock(SystemClock&&) = delete;

    Instant date() const override;
    Duration now() const override;
    Async<> sleep(Duration duration) override;

private:
    class Timers;
    std::shared_ptr<Timers> timers_;
};

} // namespace vorn
