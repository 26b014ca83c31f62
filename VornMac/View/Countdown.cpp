#include "VornMac/View/Countdown.h"

#include <algorithm>
#include <limits>

namespace vorn::countdown {
namespace {

using std::chrono::seconds;

} // namespace

int secondsLeft(Instant date, Instant expiry)
{
    const auto left = std::chrono::ceil<seconds>(expiry - date).count();
    return static_cast<int>(std::clamp<decltype(left)>(left, 0, std::numeric_limits<int>::max()));
}

std::optional<Clock::Duration> untilNextSecond(Instant date, Instant expiry)
{
    const auto left = expiry - date;
    if (left <= left.zero()) return std::nullopt;
    return left - (std::chrono::ceil<seconds>(left) - seconds(1));
}

} // namespace vorn::countdown
