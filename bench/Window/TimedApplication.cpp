#include "bench/Window/TimedApplication.h"

#include "bench/Window/FrameWatch.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

#include <QEventLoop>
#include <QTimer>

namespace vorn::bench {
namespace {

using namespace std::chrono_literals;
using Steady = std::chrono::steady_clock;

constexpr auto patience = 60s;

} // namespace

bool TimedApplication::notify(QObject* receiver, QEvent* event)
{
    if (depth_ > 0) return QGuiApplication::notify(receiver, event);
    ++depth_;
    const auto begin = Steady::now();
    const bool result = QGuiApplication::notify(receiver, event);
    longest_ = std::max(longest_, Steady::now() - begin);
    --depth_;
    return result;
}

void TimedApplication::runFor(std::chrono::milliseconds time)
{
    QEventLoop loop;
    QTimer::singleShot(time, Qt::PreciseTimer, &loop, &QEventLoop::quit);
    loop.exec();
}

void TimedApplication::runUntil(const std::function<bool()>& done)
{
    bool isLate = false;
    QTimer alarm;
    alarm.callOnTimeout([&isLate] { isLate = true; });
    alarm.start(patience);
    while (!done()) {
        if (isLate) throw std::runtime_error("the window did not reach the expected state");
        processEvents(QEventLoop::WaitForMoreEvents);
    }
}

void TimedApplication::inTurn(std::function<void()> work)
{
    QMetaObject::invokeMethod(qGuiApp, std::move(work), Qt::QueuedConnection);
}

double TimedApplication::takeLongestTurn()
{
    return milliseconds(std::exchange(longest_, {}));
}

} // namespace vorn::bench
