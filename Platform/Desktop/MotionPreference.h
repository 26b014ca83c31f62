#pragma once

#include <functional>
#include <memory>

namespace vorn {

/// Whether the user prefers reduced motion; false where the system does not say. Threads: the main one.
bool systemReducesMotion();

/// Calls `onChange` with the new preference whenever it changes, while this object lives. Threads: the main one, whose
/// event loop delivers the change; on Linux it must be a GLib main loop, such as Qt's.
class MotionWatch {
public:
    explicit MotionWatch(std::function<void(bool reduces)> onChange);
    ~MotionWatch();
    MotionWatch(MotionWatch&&) = delete;

private:
    struct System;
    std::unique_ptr<System> system_; ///< null where the system reports no changes
};

} // namespace vorn
