#pragma once

#include "VornMac/Text/UploadRate.h"
#include "VornMacCore/Client/UploadProgress.h"

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>

namespace vorn {

/// Estimates how long an upload still takes, from its bytes over time. Keeps to an announced end while that stays about
/// right, so that the shown time counts down and does not jump. Threads: one at a time.
class TimeLeft {
public:
    using Time = UploadRate::Time;

    TimeLeft();

    /// Notes the progress at `now`.
    void update(const UploadProgress& progress, Time now);

    /// Absent until there are enough samples, and once nothing has moved for a while.
    std::optional<std::chrono::seconds> at(Time now) const;

private:
    std::optional<Time> measuredEnd(const UploadProgress& progress, Time now) const;

    UploadRate rate_;
    std::int64_t sent_ = -1; ///< at the last update; before the first, less than any
    Time lastMove_{};
    std::optional<Time> end_; ///< the announced end
};

/// "about 2 minutes left", in coarser steps for longer times.
std::string timeLeftText(std::chrono::seconds left);

} // namespace vorn
