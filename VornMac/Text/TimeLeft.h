#pragma once

#include "VornMac/Text/UploadRate.h"
#include "VornMacCore/Client/UploadProgress.h"

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>

namespace vorn {

/// Estimates how long an upload will still take, from its bytes over time. Keeps an announced end while it stays about
/// right, so that the time shown counts down and does not jump. Threads: one at a time.
class TimeLeft {
public:
    using Time = UploadRate::Time;

    TimeLeft();

    /// Notes the progress at `now`.
    void update(const UploadProgress& progress, Time now);

    /// The time left at `now`, at least 1 second. Absent until there are enough samples, when nothing has moved for 5
    /// seconds, and above 24 hours.
    std::optional<std::chrono::seconds> at(Time now) const;

private:
    std::optional<Time> measuredEnd(const UploadProgress& progress, Time now) const;

    UploadRate rate_;
    std::int64_t sent_ = -1; ///< bytes at the last update; before the first, less than any count
    Time lastMove_{};
    std::optional<Time> end_; ///< the announced end
};

/// "about 2 minutes left", in coarser steps for longer times.
std::string timeLeftText(std::chrono::seconds left);

} // namespace vorn
