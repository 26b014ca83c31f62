#include "VornMac/Application/DisplayWatch.h"

#include <cstdio>
#include <cstdlib>

namespace vorn {

DisplayWatch* DisplayWatch::installed = nullptr;

DisplayWatch::DisplayWatch()
{
    installed = this;
    previousHandler_ = qInstallMessageHandler(&DisplayWatch::take);
}

DisplayWatch::~DisplayWatch()
{
    qInstallMessageHandler(previousHandler_);
    installed = nullptr;
    for (const auto& [type, text] : held_) previousHandler_(type, {}, text);
}

void DisplayWatch::take(QtMsgType type, const QMessageLogContext& /*context*/, const QString& text)
{
    if (type == QtFatalMsg) {
        std::fputs("VornMac: No window can be shown here. In a terminal, vorn-terminal does the same.\n", stderr);
        std::_Exit(1); // nothing has started yet that would need clean-up
    }
    const std::lock_guard lock(installed->mutex_);
    installed->held_.push_back({type, text});
}

} // namespace vorn
