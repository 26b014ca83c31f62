#include "Tools/Terminal/UploadDisplay.h"

#include <utility>

namespace vorn {
namespace {

std::chrono::steady_clock::time_point timePoint(Clock::Duration now)
{
    using TimePoint = std::chrono::steady_clock::time_point;
    return TimePoint(std::chrono::duration_cast<TimePoint::duration>(now));
}

} // namespace

UploadDisplay::UploadDisplay(MainContext& context, const Clock& clock, const Terminal& terminal)
    : context_(context), clock_(clock), terminal_(terminal),
      line_(terminal.forProgress(), [&clock] { return timePoint(clock.now()); })
{
    inbox_->display = this;
}

UploadDisplay::~UploadDisplay()
{
    const std::lock_guard lock(inbox_->mutex);
    inbox_->display = nullptr;
}

void UploadDisplay::report(const UploadProgress& progress)
{
    const std::lock_guard lock(inbox_->mutex);
    if (std::exchange(inbox_->newest, progress)) return; // the work that shows it is on its way
    context_.post([inbox = inbox_] {
        std::unique_lock inboxLock(inbox->mutex);
        const auto newest = std::exchange(inbox->newest, std::nullopt);
        UploadDisplay* const display = inbox->display; // goes away on this very thread
        inboxLock.unlock();
        if (display != nullptr && newest) display->show(*newest);
    });
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
