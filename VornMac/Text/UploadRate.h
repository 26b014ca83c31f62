#pragma once

#include <chrono>
#include <cstdint>
#include <deque>
#include <optional>

namespace vorn {

/// How fast an upload's bytes move, over the last seconds. Threads: one at a time.
class UploadRate {
public:
    using Time = std::chrono::nanoseconds; ///< of a monotonic clock
    struct Window {
        Time longest;        ///< over which the rate is taken
        Time enough;         ///< less would be a guess
        Time betweenSamples; ///< progress comes in thousands of steps a second
    };

    explicit UploadRate(const Window& window) : window_(window) {}

    /// Notes that `bytes` have been sent by `now`; returns whether a sample was taken. Begins anew when a part that is
    /// sent again takes the upload back.
    bool update(std::int64_t bytes, Time now);

    /// Absent until there is enough to go by.
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
