#include "Tools/Terminal/UploadMeter.h"

#include "Platform/Base/Text.h"
#include "VornMac/Text/ByteText.h"
#include "VornMac/Text/UploadText.h"

#include <cmath>
#include <cstdint>

#include <fmt/format.h>

namespace vorn {
namespace {

using namespace std::chrono_literals;

constexpr UploadRate::Window window{.longest = 5s, .enough = 500ms, .betweenSamples = 100ms};
constexpr int barCells = 20;
constexpr double longestTold = 99.0 * 3600; // seconds

std::string bar(double fraction)
{
    const int full = static_cast<int>(fraction * barCells);
    std::string cells;
    for (int cell = 0; cell < barCells; ++cell) cells += cell < full ? "█" : "░";
    return cells;
}

std::string durationText(double inSeconds)
{
    const auto whole = static_cast<std::int64_t>(std::ceil(inSeconds));
    if (whole < 60) return fmt::format("{} s", whole);
    if (whole < 3600) return fmt::format("{}:{:02} min", whole / 60, whole % 60);
    return fmt::format("{}:{:02} h", whole / 3600, whole % 3600 / 60);
}

} // namespace

UploadMeter::UploadMeter() : rate_(window)
{
}

void UploadMeter::update(const UploadProgress& progress, Clock::Duration now)
{
    progress_ = progress;
    rate_.update(progress.bytesSent, now);
}

int UploadMeter::percent() const
{
    return wholePercents(progress_.fraction());
}

std::string UploadMeter::percentText() const
{
    return percentLabel(progress_.fraction());
}

std::string UploadMeter::amounts() const
{
    return "  " + partText(progress_.bytesSent, progress_.totalBytes);
}

std::string UploadMeter::rateText() const
{
    const auto speed = rate();
    return speed ? fmt::format("  {}/s", bytesText(static_cast<std::int64_t>(*speed))) : "";
}

std::string UploadMeter::timeLeft() const
{
    const auto speed = rate();
    if (!speed || *speed < 1) return "";
    const double left = static_cast<double>(progress_.totalBytes - progress_.bytesSent) / *speed;
    return left < 0 || left > longestTold ? "" : "  " + durationText(left) + " left";
}

std::string UploadMeter::line(int columns) const
{
    const auto fits = [columns](const std::string& text) {
        return static_cast<int>(text::scalars(text).size()) < columns; // each character of these texts takes one column
    };
    std::string line = percentText();
    for (const std::string& more : {amounts(), rateText(), timeLeft()}) {
        if (fits(line + more)) line += more;
    }
    const std::string whole = "[" + bar(progress_.fraction()) + "] " + line;
    return fits(whole) ? whole : line;
}

std::string UploadMeter::plainLine() const
{
    return percentText() + amounts() + rateText();
}

} // namespace vorn
