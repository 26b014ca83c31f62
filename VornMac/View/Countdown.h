#pragma once

#include "Platform/Async/Clock.h"

#include <optional>

/// Counts down to an expiry in whole seconds. Plain functions: none reads a clock.
namespace vorn::countdown {

/// The seconds from `date` to `expiry`, rounded up; 0 at the expiry and after it.
int secondsLeft(Instant date, Instant expiry);

/// How long after `date` the result of `secondsLeft` changes; absent once it is 0.
std::optional<Clock::Duration> untilNextSecond(Instant date, Instant expiry);

} // namespace vorn::countdown
