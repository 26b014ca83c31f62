#pragma once

#include "Platform/Base/CancelFlag.h"
#include "VornSandbox/SampleHistory/SampleRandom.h"

#include <cstdint>

namespace vorn {

/// When the rows of a history were written: bursts of messages a few seconds to minutes apart, with hours between the
/// bursts, strictly increasing and ending before a given time. Threads: one at a time.
class SampleTimeline {
public:
    struct Tick {
        std::int64_t date = 0;      ///< nanoseconds since 2001-01-01T00:00:00Z, whole milliseconds
        bool beginsSession = false; ///< after a long pause: likely another conversation
    };

    /// `untilSeconds` counts from 2001-01-01T00:00:00Z. A thousand rows span about 18 days; a history that would span
    /// more than nine years is compressed into nine. Construction takes about a second for a hundred million rows; a
    /// raised `cancel`, which may be null, ends it with `Cancelled`.
    SampleTimeline(std::uint64_t seed, std::int64_t rows, std::int64_t untilSeconds,
                   const CancelFlag* cancel = nullptr);

    Tick next();

private:
    struct Step {
        std::int64_t seconds = 0; ///< since the previous row, before scaling
        bool beginsSession = false;
    };
    Step step();

    SampleRandom random_;
    SampleRandom jitter_;
    std::int64_t leftInSession_ = 0;
    std::int64_t elapsed_ = 0;          ///< in unscaled seconds
    std::int64_t unit_ = 1'000'000'000; ///< nanoseconds per unscaled second
    std::int64_t beginning_ = 0;        ///< in the unit of `Tick::date`
};

} // namespace vorn
