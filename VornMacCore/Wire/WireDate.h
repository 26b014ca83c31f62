#pragma once

#include "Platform/Base/Dates.h"

#include <optional>
#include <string>

namespace vorn {

/// The service's time stamps, which stay text in the records and are parsed where a date is needed. Threads: any.
namespace WireDate {

/// Returns the time that `text` names: an ISO 8601 date, "T", a time with seconds, with or without a fraction, and "Z"
/// or an offset such as "+01:00". Absent for absent text and for any other form, such as a date without a time; never
/// throws. Truncates to milliseconds.
std::optional<Instant> parse(const std::optional<std::string>& text) noexcept;

} // namespace WireDate
} // namespace vorn
