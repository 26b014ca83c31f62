#pragma once

#include "Platform/Async/Clock.h"

#include <cstddef>
#include <memory>
#include <optional>

namespace vorn {
class MainContext;
} // namespace vorn

namespace vorn::testing {

/// A clock that stands still until a test moves it: flows that sleep take no time and are deterministic. Threads: any.
class ManualClock final : public Clock {
public:
    /// `now` begins at zero.
    explicit ManualClock(Instant date = std::chrono::sys_days(std::chrono::year(2026) / 3 / 1) + std::chrono::hours(9));
    ~ManualClock() override;
    ManualClock(ManualClock&&) = delete;

    Instant date() const override;
    Duration now() const override;
    Async<> sleep(Duration duration) override;

    /// Moves `date` and `now` and ends the sleeps that are due, by deadline and then in the order they began. Their
    /// tasks continue when their context runs, and all see the time after the whole step.
    void advance(Duration duration);
    /// The same from deadline to deadline, running `context` at each: a task that polls sees each of its deadlines.
    /// Runs what is queued first, so that sleeps about to begin do so before time passes.
    void advance(Duration duration, MainContext& context);
    /// Sets only `date`, as users and time servers do; sleeps are not affected.
    void setDate(Instant date);

    std::size_t pendingSleeps() const;
    /// The value of `now` at which the next sleep ends.
    std::optional<Duration> nextDeadline() const;

private:
    class State;
    std::shared_ptr<State> state_; ///< shared with the sleeps, which may be cancelled after the clock is gone
};

} // namespace vorn::testing
