#include "bench/Window/FrameWatch.h"

#include <QEvent>

namespace vorn::bench {

using Steady = std::chrono::steady_clock;

FrameWatch::FrameWatch(QQuickWindow& window)
{
    window.installEventFilter(this);
    connect(&window, &QQuickWindow::frameSwapped, this, &FrameWatch::note, Qt::DirectConnection);
}

bool FrameWatch::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::UpdateRequest) begin_ = Steady::now();
    return QObject::eventFilter(watched, event);
}

void FrameWatch::note()
{
    last_ = Steady::now();
    if (begin_) frames_.push_back(milliseconds(last_ - *begin_));
    begin_.reset(); // a frame that the system asked for has not waited for its turn
}

} // namespace vorn::bench
