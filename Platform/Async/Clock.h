#pragma once

#include "Platform/Async/Async.h"
#include "Platform/Base/Dates.h"

#include <chrono>
#include <memory>

namespace vorn {

/// What time it is and how long to wait. Handed in wherever time matters, so that tests decide how fast it goes.
/// Threads: any.
class Clock {
public:
    using Duration = std::chrono::nanoseconds;

    virtual ~Clock() = default;

    /// The calendar's time, which users and servers may set.
    virtual Instant date() const = 0;
    /// Time since some fixed point. Never set; goes on while the machine sleeps.
    virtual Duration now() const = 0;
    /// Ends once `now` is later by `duration`, at once when that is not positive.
    virtual Async<> sleep(Duration duration) = 0;
};

/// The system's clock, with a thread that ends its sleeps.
class SystemClock final : public Clock {
public:
    SystemClock();
    /// The thread ends with the last sleep that is under way.
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
