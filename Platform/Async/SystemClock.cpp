#include "Platform/Async/Clock.h"

#include "Platform/Async/Suspend.h"
#include "Platform/Async/TimeSinceBoot.h"
#include "Platform/Async/WorkQueue.h"

#include <algorithm>
#include <atomic>
#include <cstdint>
#include <map>
#include <thread>
#include <utility>

namespace vorn {

/// Ends sleeps on a thread of its own. Only that thread touches the sleeps; others post to it.
class SystemClock::Timers {
public:
    Timers() : thread_([this] { run(); }) {}
    ~Timers()
    {
        queue_.post([this] { ended_ = true; });
        thread_.join();
    }
    Timers(Timers&&) = delete;

    CancelAction wake(Resume<void> resume, Duration at)
    {
        const Key key(at, ++count_);
        queue_.post([this, key, resume = std::move(resume)] { sleeps_.emplace(key, resume); });
        return [this, key] { queue_.post([this, key] { sleeps_.erase(key); }); };
    }

private:
    using Key = std::pair<Duration, std::uint64_t>; ///< when the sleep ends, and a number: several may end at once

    void run()
    {
        while (!ended_) {
            waitForWork();
            while (queue_.runOne()) {
            }
            while (!sleeps_.empty() && sleeps_.begin()->first.first <= timeSinceBoot())
                sleeps_.extract(sleeps_.begin()).mapped()();
        }
    }

    /// Waits a second at most: the system's timers stop while the machine sleeps, and due sleeps must end soon after.
    void waitForWork()
    {
        if (sleeps_.empty()) return queue_.waitForWork();
        const Duration left = sleeps_.begin()->first.first - timeSinceBoot();
        queue_.waitForWork(std::chrono::steady_clock::now() + std::min<Duration>(left, std::chrono::seconds(1)));
    }

    detail::WorkQueue queue_{{}};
    std::map<Key, Resume<void>> sleeps_;
    std::atomic<std::uint64_t> count_ = 0;
    bool ended_ = false;
    std::thread thread_; // last: it uses the members above
};

SystemClock::SystemClock() : timers_(std::make_shared<Timers>())
{
}

SystemClock::~SystemClock() = default;

Instant SystemClock::date() const
{
    return std::chrono::floor<Instant::duration>(std::chrono::system_clock::now());
}

Clock::Duration SystemClock::now() const
{
    return timeSinceBoot();
}

Async<> SystemClock::sleep(Duration duration)
{
    constexpr Duration century = std::chrono::years(100); // "forever" must not overflow
    const auto until = now() + std::min(duration, century);
    if (duration <= Duration::zero()) {
        co_await checkCancellation();
        co_return;
    }
    const auto timers = timers_;
    co_await suspend<void>([timers, until](Resume<void> resume) { return timers->wake(std::move(resume), until); });
}

} // namespace vorn
