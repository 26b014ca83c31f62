#pragma once

#include "Platform/Async/MainContext.h"

#include <QObject>

namespace vorn {

/// A context driven by Qt's event loop: one event runs all pending work, and nested loops, such as those of a menu or
/// of a window being dragged, deliver it too. Threads: construct it on the loop's thread.
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
