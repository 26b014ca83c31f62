#pragma once

#include <chrono>
#include <cstdint>
#include <optional>

/// The time stamps of the Messages database: nanoseconds since 2001-01-01T00:00:00Z, or seconds in old rows; 0 for
/// none.
/// Threads: any.
namespace vorn::AppleTime {

/// Seconds from 1970-01-01T00:00:00Z to 2001-01-01T00:00:00Z.
inline constexpr double referenceOffset = 978307200.0;

using Date = std::chrono::sys_time<std::chrono::duration<double>>;

/// Seconds since 1970, with fractions; nothing for 0. Stamps beyond ±10^12 are nanoseconds, others seconds.
std::optional<double> unixSeconds(std::int64_t messagesDate) noexcept;

/// The same instant as a date.
std::optional<Date> date(std::int64_t messagesDate) noexcept;

} // namespace vorn::AppleTime
