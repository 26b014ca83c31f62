#pragma once

#include "Platform/Async/Clock.h"
#include "VornMacCore/Wire/LinkingRecords.h"
#include "VornMacCore/Wire/SubmissionRecords.h"

#include <chrono>
#include <optional>

/// When the application asks again. Plain functions: none reads a clock.
namespace vorn::timing {

/// Between two polls of `link`: what the service asks for, but at least a second and at most a day.
Clock::Duration pollInterval(const DeviceLink& link);

/// Until when `link` is polled, when it arrived at `arrival`: its end, or two minutes when it does not say one, and a
/// little grace for an answer that the phone gave in the last moment.
Instant pollDeadline(const DeviceLink& link, Instant arrival);

/// Between two requests for a code: one that has expired when it arrives must not make a busy loop.
inline constexpr Clock::Duration codeInterval = std::chrono::seconds(1);

inline constexpr Clock::Duration declinedIsShown = std::chrono::seconds(3);
inline constexpr Clock::Duration linkFailureIsShown = std::chrono::seconds(5);
inline constexpr Clock::Duration accessProbeInterval = std::chrono::milliseconds(1500);

/// How long to pause before asking again how the submission `last` stands, when it has been watched for `watchedFor`;
/// nothing once that has been long enough. A review by a person is asked for less often.
std::optional<Clock::Duration> nextReviewPoll(const SubmissionStatus& last, Clock::Duration watchedFor);

} // namespace vorn::timing
