#pragma once

#include "Platform/Async/Clock.h"
#include "VornMacCore/Wire/LinkingRecords.h"
#include "VornMacCore/Wire/SubmissionRecords.h"

#include <chrono>
#include <optional>

/// Intervals and deadlines of the application, as plain functions: none reads a clock.
namespace vorn::timing {

/// Returns the interval between two polls of `link`: what the service asks for, clamped to a second and a day.
Clock::Duration pollInterval(const DeviceLink& link);

/// Returns when to stop polling `link`, received at `arrival`: at its expiry, or two minutes after `arrival` if it
/// names none, plus 5 seconds for an answer that the phone gives at the last moment.
Instant pollDeadline(const DeviceLink& link, Instant arrival);

/// The shortest time between two requests for a code: codes that arrive expired must not cause a busy loop.
inline constexpr Clock::Duration codeInterval = std::chrono::seconds(1);

/// How long the keychain may take before the user is told of the wait.
inline constexpr Clock::Duration keychainIsSlow = std::chrono::milliseconds(500);

inline constexpr Clock::Duration declinedIsShown = std::chrono::seconds(3);
inline constexpr Clock::Duration linkFailureIsShown = std::chrono::seconds(5);
/// How long the user sees that access is granted before the next step is shown.
inline constexpr Clock::Duration accessIsSeen = std::chrono::milliseconds(600);
inline constexpr Clock::Duration accessProbeInterval = std::chrono::milliseconds(1500);

/// The minimum time for which a window shows an upload, however small.
inline constexpr Clock::Duration uploadIsShown = std::chrono::milliseconds(800);

/// Returns how much longer an upload that has been shown for `shownFor` stays on its step; absent if `shortest` has
/// passed.
std::optional<Clock::Duration> uploadStaysFor(Clock::Duration shownFor, Clock::Duration shortest);

/// Returns the pause before the next poll of a submission last seen as `last` and watched for `watchedFor`; absent once
/// it has been watched long enough. A review by a person is polled less often.
std::optional<Clock::Duration> nextReviewPoll(const SubmissionStatus& last, Clock::Duration watchedFor);

} // namespace vorn::timing
