#include "VornMac/Text/TimeLeft.h"

#include <algorithm>

#include <fmt/format.h>

namespace vorn {
namespace {

using namespace std::chrono_literals;
using std::chrono::seconds;

constexpr auto window = 15s;           ///< the time over which the rate is taken
constexpr auto enough = 2s;            ///< less would be a guess
constexpr auto betweenSamples = 250ms; ///< progress comes in thousands of steps a second
constexpr auto standstill = 5s;        ///< after this, the time left is unknown
constexpr auto smallestChange = 4s;    ///< of an announced end; a smaller one is not worth a jump
constexpr double changeInTime = 0.25;  ///< of the time left, likewise
constexpr auto longestTold = 24h;

/// Whether the announced end `told` may stay, now that `measured` is the better estimate.
bool isStillRight(TimeLeft::Time told, TimeLeft::Time measured, TimeLeft::Time now)
{
    const auto left = std::chrono::duration<double>(measured - now);
    const auto change = std::chrono::duration<double>(std::chrono::abs(told - measured));
    return change <= std::max(left * changeInTime, std::chrono::duration<double>(smallestChange));
}

} // namespace

void TimeLeft::update(const UploadProgress& progress, Time now)
{
    // A part that is sent again takes the upload back: earlier samples say nothing about the time left.
    if (!samples_.empty() && progress.bytesSent < samples_.back().bytes) *this = {};
    if (samples_.empty() || progress.bytesSent > samples_.back().bytes) lastMove_ = now;
    if (!samples_.empty() && now - samples_.back().at < betweenSamples) return;
    samples_.push_back({progress.bytesSent, now});
    while (samples_.size() > 2 && now - samples_.front().at > window) samples_.pop_front();
    const auto measured = measuredEnd(progress.totalBytes, now);
    if (!measured || !end_ || !isStillRight(*end_, *measured, now)) end_ = measured;
}

std::optional<TimeLeft::Time> TimeLeft::measuredEnd(std::int64_t totalBytes, Time now) const
{
    const Time span = samples_.back().at - samples_.front().at;
    const std::int64_t moved = samples_.back().bytes - samples_.front().bytes;
    if (span < enough || moved < 1) return std::nullopt;
    const auto left = std::chrono::duration<double>(span) *
                      (static_cast<double>(totalBytes - samples_.back().bytes) / static_cast<double>(moved));
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
    constexpr auto aMinute = 55s; // longer times are no longer given in tens of seconds
    constexpr auto anHour = 55min;
    if (left < 10s) return "a few seconds left";
    if (left < aMinute) return fmt::format("about {} seconds left", (left.count() + 5) / 10 * 10);
    if (left < 90s) return "about a minute left";
    if (left < anHour) return fmt::format("about {} minutes left", (left.count() + 30) / 60);
    if (left < 90min) return "about an hour left";
    return fmt::format("about {} hours left", std::chrono::round<std::chrono::hours>(left).count());
}

} // namespace vorn
