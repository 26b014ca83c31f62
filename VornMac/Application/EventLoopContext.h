#pragma once

#include "Platform/Async/MainContext.h"

#include <QObject>

namespace vorn {

/// A context that Qt's event loop drives: work that arrives becomes one event. That reaches it in nested loops too,
/// such as those of a menu or of a window that is being dragged. Threads: make it on the thread of the loop.
class EventLoopContext final : public QObject {
public:
    EventLoopContext();

    MainContext& context() noexcept { return context_; }

protected:
    bool event(QEvent* event) override;

private:
    MainContext context_;
};

} // namespace vorn
