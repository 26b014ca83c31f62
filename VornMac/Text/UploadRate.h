#pragma once

#include <chrono>
#include <cstdint>
#include <deque>
#include <optional>

namespace vorn {

/// How fast an upload has sent bytes over the last few seconds. Threads: one at a time.
class UploadRate {
public:
    using Time = std::chrono::nanoseconds; ///< of a monotonic clock
    struct Window {
        Time longest;        ///< the time over which the rate is taken
        Time enough;         ///< the least time for a rate that is not a guess
        Time betweenSamples; ///< the least time between two; progress is reported thousands of times a second
    };

    explicit UploadRate(const Window& window) : window_(window) {}

    /// Notes that `bytes` have been sent by `now`; returns whether a sample was taken. Starts over when `bytes` falls
    /// because a part is sent again.
    bool update(std::int64_t bytes, Time now);

    /// Absent until the samples span `Window::enough`.
    std::optional<double> bytesPerSecond() const;

private:
    struct Sample {
        std::int64_t bytes = 0;
        Time at{};
    };

    Window window_;
    std::deque<Sample> samples_; ///< the oldest first
};

} // namespace vorn
