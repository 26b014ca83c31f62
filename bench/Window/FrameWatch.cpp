#include "bench/Window/FrameWatch.h"

#include <QEvent>

#include <algorithm>
#include <ctime>

namespace vorn::bench {

using Steady = std::chrono::steady_clock;

namespace {

std::chrono::nanoseconds threadTime()
{
    timespec time{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return std::chrono::seconds(time.tv_sec) + std::chrono::nanoseconds(time.tv_nsec);
}

} // namespace

std::vector<double> wallTimes(const std::vector<Frame>& frames)
{
    std::vector<double> result(frames.size());
    std::ranges::transform(frames, result.begin(), &Frame::wall);
    return result;
}

FrameWatch::FrameWatch(QQuickWindow& window)
{
    window.installEventFilter(this);
    connect(&window, &QQuickWindow::frameSwapped, this, &FrameWatch::note, Qt::DirectConnection);
}

bool FrameWatch::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::UpdateRequest) begin_ = {Steady::now(), threadTime()};
    return QObject::eventFilter(watched, event);
}

void FrameWatch::note()
{
    last_ = Steady::now();
    if (begin_) frames_.push_back({milliseconds(last_ - begin_->wall), milliseconds(threadTime() - begin_->cpu)});
    begin_.reset(); // a frame without a request, such as the system's own, is not counted
}

} // namespace vorn::bench
