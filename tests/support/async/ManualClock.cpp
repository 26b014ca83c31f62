#include "tests/support/async/ManualClock.h"

#include "Platform/Async/MainContext.h"
#include "Platform/Async/Suspend.h"

#include <algorithm>
#include <cstdint>
#include <map>
#include <mutex>
#include <utility>

namespace vorn::testing {

class ManualClock::State {
public:
    explicit State(Instant date) : date_(date) {}

    Instant date() const
    {
        const std::lock_guard lock(mutex_);
        return dateAtNow();
    }

    void setDate(Instant date)
    {
        const std::lock_guard lock(mutex_);
        date_ = date;
        dateSetAt_ = now_;
    }

    Duration now() const
    {
        const std::lock_guard lock(mutex_);
        return now_;
    }

    std::size_t sleeps() const
    {
        const std::lock_guard lock(mutex_);
        return sleeps_.size();
    }

    std::optional<Duration> nextDeadline() const
    {
        const std::lock_guard lock(mutex_);
        if (sleeps_.empty()) return std::nullopt;
        return sleeps_.begin()->first.first;
    }

    /// Wakes the sleeps that are due by `target`, without holding the lock: a context's hook may ask for the time.
    void advanceTo(Duration target)
    {
        while (const auto due = takeDue(target)) (*due)();
    }

    CancelAction begin(Duration duration, const Resume<void>& resume)
    {
        const std::lock_guard lock(mutex_);
        const auto deadline = duration > Duration::max() - now_ ? Duration::max() : now_ + duration;
        const Key key(deadline, ++begun_);
        sleeps_.emplace(key, resume);
        return [this, key] { forget(key); }; // the sleep that calls this owns the state
    }

private:
    using Key = std::pair<Duration, std::uint64_t>; // the deadline, then the order of beginning

    Instant dateAtNow() const { return date_ + std::chrono::floor<Instant::duration>(now_ - dateSetAt_); }

    std::optional<Resume<void>> takeDue(Duration target)
    {
        const std::lock_guard lock(mutex_);
        const auto first = sleeps_.begin();
        if (first == sleeps_.end() || first->first.first > target) {
            now_ = std::max(now_, target);
            return std::nullopt;
        }
        now_ = first->first.first;
        return sleeps_.extract(first).mapped();
    }

    void forget(const Key& key)
    {
        decltype(sleeps_)::node_type dropped; // destroyed unlocked: it may call a context's hook
        const std::lock_guard lock(mutex_);
        dropped = sleeps_.extract(key);
    }

    mutable std::mutex mutex_; ///< guards what follows
    Instant date_;
    Duration dateSetAt_{};
    Duration now_{};
    std::uint64_t begun_ = 0;
    std::map<Key, Resume<void>> sleeps_;
};

ManualClock::ManualClock(Instant date) : state_(std::make_shared<State>(date))
{
}

ManualClock::~ManualClock() = default;

Instant ManualClock::date() const
{
    return state_->date();
}

Clock::Duration ManualClock::now() const
{
    return state_->now();
}

Async<> ManualClock::sleep(Duration duration)
{
    if (duration <= Duration::zero()) {
        co_await checkCancellation();
        co_return;
    }
    const auto state = state_;
    co_await suspend<void>([&state, duration](const Resume<void>& resume) { return state->begin(duration, resume); });
}

void ManualClock::advance(Duration duration)
{
    state_->advanceTo(now() + duration);
}

void ManualClock::advance(Duration duration, MainContext& context)
{
    const auto target = now() + duration;
    context.runUntilIdle();
    for (auto next = nextDeadline(); next && *next <= target; next = nextDeadline()) {
        state_->advanceTo(*next);
        context.runUntilIdle();
    }
    state_->advanceTo(target);
}

void ManualClock::setDate(Instant date)
{
    state_->setDate(date);
}

std::size_t ManualClock::pendingSleeps() const
{
    return state_->sleeps();
}

std::optional<Clock::Duration> ManualClock::nextDeadline() const
{
    return state_->nextDeadline();
}

} // namespace vorn::testing
