#pragma once

#include "Platform/Async/Clock.h"
#include "VornMac/Text/UploadRate.h"
#include "VornMacCore/Client/UploadProgress.h"

#include <optional>
#include <string>

namespace vorn {

/// Turns an upload's progress into text: how much is sent, how fast, and how long the rest takes. Threads: one at a
/// time.
class UploadMeter {
public:
    UploadMeter();

    /// Records the progress at `now`, a time of a monotonic clock.
    void update(const UploadProgress& progress, Clock::Duration now);

    /// Whole percents, rounded down: 100 means that all is sent.
    int percent() const;

    /// Bytes per second over the last few seconds; nothing until there are enough samples.
    std::optional<double> rate() const { return rate_.bytesPerSecond(); }

    /// "[██████░░░░] 60 %  6.0 of 10.0 MB  1.2 MB/s  4 s left", shortened to leave one of `columns` free: a wrapped
    /// line could not be erased.
    std::string line(int columns) const;

    /// The same without the bar, for output that stays: "60 %  6.0 of 10.0 MB  1.2 MB/s".
    std::string plainLine() const;

private:
    std::string percentText() const;
    std::string amounts() const;
    std::string rateText() const;
    std::string timeLeft() const;

    UploadProgress progress_;
    UploadRate rate_;
};

} // namespace vorn
