#include "VornMac/Model/Timing.h"

#include <algorithm>

namespace vorn::timing {
namespace {

using namespace std::chrono_literals;

constexpr Clock::Duration shortestPollInterval = 1s;
constexpr auto lifetimeOfUndatedLink = 120s;
constexpr auto linkGrace = 5s;
constexpr auto longestWatch = 1200s;

} // namespace

Clock::Duration pollInterval(const DeviceLink& link)
{
    constexpr std::int64_t longest = 24LL * 3600 * 1000; // a larger number must not overflow
    return std::max<Clock::Duration>(std::chrono::milliseconds(std::min(link.pollIntervalMs, longest)),
                                     shortestPollInterval);
}

Instant pollDeadline(const DeviceLink& link, Instant arrival)
{
    return link.expiresAtDate().value_or(arrival + lifetimeOfUndatedLink) + linkGrace;
}

std::optional<Clock::Duration> nextReviewPoll(const SubmissionStatus& last, Clock::Duration watchedFor)
{
    if (watchedFor >= longestWatch) return std::nullopt;
    return last.status == "review_pending" ? 30s : 5s;
}

} // namespace vorn::timing
