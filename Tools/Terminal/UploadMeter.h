#pragma once

#include "Platform/Async/Clock.h"
#include "VornMacCore/Client/UploadProgress.h"

#include <cstdint>
#include <deque>
#include <optional>
#include <string>

namespace vorn {

/// Turns an upload's progress into words: how much, how fast, how long it still takes. Threads: one at a time.
class UploadMeter {
public:
    /// Notes the progress at `now`, of a monotonic clock.
    void update(const UploadProgress& progress, Clock::Duration now);

    /// Whole percents, rounded down: 100 means that all is sent.
    int percent() const;

    /// Bytes a second over the last few seconds; nothing until there is enough to go by.
    std::optional<double> rate() const;

    /// "[██████░░░░] 60 %  6.0 of 10.0 MB  1.2 MB/s  4 s left", or as much of it as leaves one of `columns` free: a
    /// wrapped line could not be erased.
    std::string line(int columns) const;

    /// The same without the bar, for output that stays: "60 %  6.0 of 10.0 MB  1.2 MB/s".
    std::string plainLine() const;

private:
    struct Sample {
        std::int64_t bytes = 0;
        Clock::Duration at{};
    };
    std::string percentText() const;
    std::string amounts() const;
    std::string rateText() const;
    std::string timeLeft() const;

    UploadProgress progress_;
    std::deque<Sample> samples_; ///< of the last seconds, the oldest first
};

} // namespace vorn
