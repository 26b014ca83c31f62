#pragma once

#include "VornMacCore/Client/UploadProgress.h"

#include <chrono>
#include <cstdint>
#include <deque>
#include <optional>
#include <string>

namespace vorn {

/// Estimates how long an upload still takes, from its bytes over time. Keeps to an announced end while that stays about
/// right, so that the shown time counts down and does not jump. Threads: one at a time.
class TimeLeft {
public:
    using Time = std::chrono::nanoseconds; ///< of a monotonic clock

    /// Notes the progress at `now`.
    void update(const UploadProgress& progress, Time now);

    /// Absent until there are enough samples, and once nothing has moved for a while.
    std::optional<std::chrono::seconds> at(Time now) const;

private:
    struct Sample {
        std::int64_t bytes = 0;
        Time at{};
    };
    std::optional<Time> measuredEnd(std::int64_t totalBytes, Time now) const;

    std::deque<Sample> samples_; ///< of the last seconds, the oldest first
    Time lastMove_{};
    std::optional<Time> end_; ///< the announced end
};

/// "about 2 minutes left", in coarser steps for longer times.
std::string timeLeftText(std::chrono::seconds left);

} // namespace vorn
