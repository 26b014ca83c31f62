#include "VornMac/Model/Timing.h"

#include <algorithm>

namespace vorn::timing {
namespace {

using namespace std::chrono_literals;

constexpr std::chrono::milliseconds shortestPollInterval = 1s;
constexpr std::chrono::milliseconds longestPollInterval = 24h;
constexpr auto lifetimeOfUndatedLink = 120s;
constexpr auto linkGrace = 5s;
constexpr auto longestWatch = 20min;
constexpr auto reviewInterval = 5s;
constexpr auto personsReviewInterval = 30s;

} // namespace

Clock::Duration pollInterval(const DeviceLink& link)
{
    // Clamped in milliseconds, the service's unit: an arbitrary number could overflow the clock's.
    return std::clamp(std::chrono::milliseconds(link.pollIntervalMs), shortestPollInterval, longestPollInterval);
}

Instant pollDeadline(const DeviceLink& link, Instant arrival)
{
    return link.expiresAtDate().value_or(arrival + lifetimeOfUndatedLink) + linkGrace;
}

std::optional<Clock::Duration> uploadStaysFor(Clock::Duration shownFor, Clock::Duration shortest)
{
    return shownFor < shortest ? std::optional(shortest - shownFor) : std::nullopt;
}

std::optional<Clock::Duration> nextReviewPoll(const SubmissionStatus& last, Clock::Duration watchedFor)
{
    if (watchedFor >= longestWatch) return std::nullopt;
    return last.status.is(ReviewStatus::Kind::reviewPending) ? personsReviewInterval : reviewInterval;
}

} // namespace vorn::timing
