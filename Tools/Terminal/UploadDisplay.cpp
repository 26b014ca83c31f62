#include "Tools/Terminal/UploadDisplay.h"

namespace vorn {
namespace {

std::chrono::steady_clock::time_point timePoint(Clock::Duration now)
{
    using TimePoint = std::chrono::steady_clock::time_point;
    return TimePoint(std::chrono::duration_cast<TimePoint::duration>(now));
}

} // namespace

UploadDisplay::UploadDisplay(const Clock& clock, const Terminal& terminal)
    : clock_(clock), terminal_(terminal), line_(terminal.forProgress(), [&clock] { return timePoint(clock.now()); })
{
}

void UploadDisplay::show(const UploadProgress& progress)
{
    meter_.update(progress, clock_.now());
    if (const auto window = terminal_.window()) {
        line_.show(meter_.line(window->columns));
    } else if (const int tenths = meter_.percent() / 10; tenths > toldTenths_) {
        toldTenths_ = tenths;
        terminal_.say(meter_.plainLine());
    }
}

} // namespace vorn
