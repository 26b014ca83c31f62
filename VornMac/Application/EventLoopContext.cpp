#include "VornMac/Application/EventLoopContext.h"

#include <QCoreApplication>
#include <QEvent>

namespace vorn {
namespace {

QEvent::Type workArrived()
{
    static const auto type = static_cast<QEvent::Type>(QEvent::registerEventType());
    return type;
}

} // namespace

EventLoopContext::EventLoopContext()
    : context_([this] { QCoreApplication::postEvent(this, new QEvent(workArrived())); })
{
}

bool EventLoopContext::event(QEvent* event)
{
    if (event->type() != workArrived()) return QObject::event(event);
    context_.runPending();
    return true;
}

} // namespace vorn
