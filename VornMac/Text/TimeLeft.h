#pragma once

#include "VornMacCore/Client/UploadProgress.h"

#include <chrono>
#include <cstdint>
#include <deque>
#include <optional>
#include <string>

namespace vorn {

/// Estimates how long an upload still takes, from its bytes over time. It keeps to the end that it has once told while
/// that stays about right: what is shown counts down and does not jump. Threads: one at a time.
class TimeLeft {
public:
    using Time = std::chrono::nanoseconds; ///< of a clock that only goes forward

    /// How far the upload is at `now`.
    void update(const UploadProgress& progress, Time now);

    /// Absent until there is enough to go by, and once nothing has moved for a while.
    std::optional<std::chrono::seconds> at(Time now) const;

private:
    struct Sample {
        std::int64_t bytes = 0;
        Time at{};
    };
    std::optional<Time> measuredEnd(std::int64_t totalBytes, Time now) const;

    std::deque<Sample> samples_; ///< of the last seconds, the oldest first
    Time lastMove_{};
    std::optional<Time> end_; ///< as it was told
};

/// "about 2 minutes left", the coarser the longer.
std::string timeLeftText(std::chrono::seconds left);

} // namespace vorn
