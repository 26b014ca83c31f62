#include "VornMac/Text/TimeLeft.h"

#include <algorithm>

#include <fmt/format.h>

namespace vorn {
namespace {

using namespace std::chrono_literals;
using std::chrono::seconds;

constexpr UploadRate::Window window{.longest = 15s, .enough = 2s, .betweenSamples = 250ms};
constexpr auto standstill = 5s;       ///< without progress for this long, the time left is unknown
constexpr auto smallestChange = 4s;   ///< of an announced end; a smaller one is not worth a jump
constexpr double changeInTime = 0.25; ///< the same, as a fraction of the time left
constexpr auto longestTold = 24h;

/// Whether the announced end `told` may stay, now that `measured` is the better estimate.
bool isStillRight(TimeLeft::Time told, TimeLeft::Time measured, TimeLeft::Time now)
{
    const auto left = std::chrono::duration<double>(measured - now);
    const auto change = std::chrono::duration<double>(std::chrono::abs(told - measured));
    return change <= std::max(left * changeInTime, std::chrono::duration<double>(smallestChange));
}

} // namespace

TimeLeft::TimeLeft() : rate_(window)
{
}

void TimeLeft::update(const UploadProgress& progress, Time now)
{
    if (progress.bytesSent < sent_) end_.reset();
    if (progress.bytesSent != sent_) lastMove_ = now;
    sent_ = progress.bytesSent;
    if (!rate_.update(progress.bytesSent, now)) return;
    const auto measured = measuredEnd(progress, now);
    if (!measured || !end_ || !isStillRight(*end_, *measured, now)) end_ = measured;
}

std::optional<TimeLeft::Time> TimeLeft::measuredEnd(const UploadProgress& progress, Time now) const
{
    const auto speed = rate_.bytesPerSecond();
    if (!speed || *speed <= 0) return std::nullopt;
    const std::chrono::duration<double> left(static_cast<double>(progress.totalBytes - progress.bytesSent) / *speed);
    if (left > longestTold) return std::nullopt;
    return now + std::chrono::duration_cast<Time>(left);
}

std::optional<seconds> TimeLeft::at(Time now) const
{
    if (!end_ || now - lastMove_ >= standstill) return std::nullopt;
    return std::chrono::ceil<seconds>(std::max(*end_ - now, Time(1s)));
}

std::string timeLeftText(seconds left)
{
    constexpr auto aMinute = 55s; // from here on, times are not given in tens of seconds
    constexpr auto anHour = 55min;
    if (left < 10s) return "a few seconds left";
    if (left < aMinute) return fmt::format("about {} seconds left", (left.count() + 5) / 10 * 10);
    if (left < 90s) return "about a minute left";
    if (left < anHour) return fmt::format("about {} minutes left", (left.count() + 30) / 60);
    if (left < 90min) return "about an hour left";
    return fmt::format("about {} hours left", std::chrono::round<std::chrono::hours>(left).count());
}

} // namespace vorn
