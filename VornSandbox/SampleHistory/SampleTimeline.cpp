#include "VornSandbox/SampleHistory/SampleTimeline.h"

#include <algorithm>

namespace vorn {
namespace {

constexpr std::int64_t second = 1'000'000'000;
constexpr std::int64_t millisecond = 1'000'000;
constexpr std::int64_t longestSpan = std::int64_t{9} * 365 * 86'400; // in seconds

} // namespace

SampleTimeline::SampleTimeline(std::uint64_t seed, std::int64_t rows, std::int64_t untilSeconds,
                               const CancelFlag* cancel)
    : random_(seed), jitter_(seed + 1)
{
    // The same steps are drawn twice: once to learn how long the history would be, then to fit it into its span.
    std::int64_t total = 1;
    for (std::int64_t row = 0; row < rows; ++row) {
        if (cancel != nullptr) cancel->check();
        total += step().seconds;
    }
    random_ = SampleRandom(seed);
    leftInSession_ = 0;
    if (total > longestSpan) unit_ = std::max(second * longestSpan / total, millisecond);
    beginning_ = (untilSeconds - 60) * second - total * unit_;
}

SampleTimeline::Tick SampleTimeline::next()
{
    const auto [seconds, beginsSession] = step();
    elapsed_ += seconds;
    const std::int64_t date = beginning_ + elapsed_ * unit_ + jitter_.between(0, unit_);
    return {date - date % millisecond, beginsSession};
}

SampleTimeline::Step SampleTimeline::step()
{
    if (leftInSession_-- > 0) return {random_.between(4, 150), false};
    leftInSession_ = random_.between(5, 28);
    return {random_.between(1'800, 50'000), true};
}

} // namespace vorn
