#pragma once

#include "Platform/Async/Clock.h"
#include "VornMacCore/Client/VornAPI.h"

#include <chrono>
#include <functional>
#include <optional>

namespace vorn {

/// How long to pause before asking again how `last` stands; nothing once watching is over, after the review's end or
/// 20 minutes. Reads no clock.
std::optional<std::chrono::seconds> nextPollDelay(const SubmissionStatus& last, Clock::Duration watchedFor);

/// Polls until the review of the submission `last` has ended or it is too long to wait, and gives the newest status.
/// `onChange` is told of each other one. Throws `APIError` when the session has ended, and `Cancelled`; a poll that
/// fails otherwise is logged. `clock` must outlive it.
Async<SubmissionStatus> watchSubmission(VornAPI api, Clock* clock, SubmissionStatus last,
                                        std::function<void(const SubmissionStatus&)> onChange);

} // namespace vorn
