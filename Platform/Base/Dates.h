#pragma once

#include <chrono>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace vorn {

/// A point in time, without a calendar or a zone. In milliseconds: the standard clock's unit differs between systems,
/// and nanoseconds overflow in the year 2262.
using Instant = std::chrono::sys_time<std::chrono::milliseconds>;

/// A point in time broken down by the Gregorian calendar.
struct CalendarTime {
    int year = 0;
    int month = 1;  ///< 1–12
    int day = 1;    ///< 1–31
    int hour = 0;   ///< 0–23
    int minute = 0; ///< 0–59
    int second = 0; ///< 0–59
    bool operator==(const CalendarTime&) const = default;
};

/// `instant` on the wall clock of the user's current time zone (the `TZ` variable, else the system's setting).
CalendarTime localTime(Instant instant);

/// Formats times in the user's time zone and by the conventions of the user's region. Slow to construct, fast to use.
/// Threads: one at a time.
class LocalDates {
public:
    /// Takes the user's settings as they are now.
    LocalDates();
    ~LocalDates();
    LocalDates(LocalDates&&) noexcept;

    std::string day(Instant instant) const;  ///< abbreviated: "Mar 1, 2026"
    std::string time(Instant instant) const; ///< with seconds: "9:15:00 AM"

private:
    struct Formats;
    std::unique_ptr<Formats> formats_;
};

/// As `LocalDates::day`, for a single use. Threads: any.
std::string dayText(Instant instant);

/// An internet date-time (RFC 3339) in UTC, whole seconds rounded down: "2026-03-01T09:15:00Z".
std::string internetDateTime(Instant instant);

/// Reads an internet date-time (RFC 3339) with any offset, with or without a fraction; nothing when `text` is not one.
std::optional<Instant> parseInternetDateTime(std::string_view text);

} // namespace vorn
