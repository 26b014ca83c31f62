#include "tests/VornMac/Window/HandDrivenAnimations.h"

#include <algorithm>

#include <QCoreApplication>

namespace vorn::testing {

/// Restarts the elapsed time at zero.
void HandDrivenAnimations::start()
{
    elapsed_ = 0;
    QAnimationDriver::start();
}

void HandDrivenAnimations::pass(int milliseconds)
{
    constexpr int frame = 10;
    while (milliseconds > 0) {
        QCoreApplication::processEvents(); // animations that were started begin in the event loop
        const int step = std::min(frame, milliseconds);
        milliseconds -= step;
        if (!isRunning()) continue; // nothing is animated
        elapsed_ += step;
        advance();
    }
    QCoreApplication::processEvents();
}

} // namespace vorn::testing
