#include "Platform/Async/Clock.h"

#include "Platform/Async/Suspend.h"
#include "Platform/Async/TimeSinceBoot.h"

#include <algorithm>
#include <thread>

#include <asio/basic_waitable_timer.hpp>
#include <asio/executor_work_guard.hpp>
#include <asio/io_context.hpp>
#include <asio/post.hpp>

namespace vorn {
namespace {

/// What Asio's timers run by here.
struct BootClock {
    using duration = std::chrono::nanoseconds; // NOLINTBEGIN(readability-identifier-naming): the standard's names
    using rep = duration::rep;
    using period = duration::period;
    using time_point = std::chrono::time_point<BootClock>; // NOLINTEND(readability-identifier-naming)

    static time_point now() noexcept { return time_point(timeSinceBoot()); }
};

/// The system's own timers stand still while the machine sleeps: one that is armed for at most a second finds out soon
/// after it woke.
struct ArmedForASecond {
    static BootClock::duration
    to_wait_duration(const BootClock::duration& left) // NOLINT(readability-identifier-naming)
    {
        return std::min<BootClock::duration>(left, std::chrono::seconds(1));
    }
};

using Timer = asio::basic_waitable_timer<BootClock, ArmedForASecond>;

} // namespace

class SystemClock::Timers {
public:
    Timers() : thread_([this] { context_.run(); }) {}
    ~Timers()
    {
        context_.stop();
        thread_.join();
    }
    Timers(Timers&&) = delete;

    CancelAction wake(Resume<void> resume, BootClock::time_point at)
    {
        auto timer = std::make_shared<Timer>(context_);
        asio::post(context_, [timer, at, resume = std::move(resume)] {
            timer->expires_at(at);
            timer->async_wait([timer, resume](const asio::error_code& error) {
                if (!error) resume();
            });
        });
        return [this, timer] { asio::post(context_, [timer] { timer->cancel(); }); };
    }

private:
    asio::io_context context_{1};
    asio::executor_work_guard<asio::io_context::executor_type> staysOpen_{context_.get_executor()};
    std::thread thread_; // last: it runs what is above
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
    constexpr Duration century = std::chrono::years(100); // "for ever" must not overflow
    const auto until = BootClock::now() + std::min(duration, century);
    if (duration <= Duration::zero()) {
        co_await checkCancellation();
        co_return;
    }
    const auto timers = timers_;
    co_await suspend<void>([timers, until](Resume<void> resume) { return timers->wake(std::move(resume), until); });
}

} // namespace vorn
