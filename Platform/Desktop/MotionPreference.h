#pragma once

#include <functional>
#include <memory>

namespace vorn {

/// Whether the user has asked the system for interfaces that move less; false where the system cannot tell. Threads:
/// the main one.
bool systemReducesMotion();

/// Calls `onChange` with the new answer whenever the user changes it, as long as this object lives. Threads: the main
/// one, whose event loop delivers the change; on Linux that must be a loop of GLib, as Qt's is.
class MotionWatch {
public:
    explicit MotionWatch(std::function<void(bool reduces)> onChange);
    ~MotionWatch();
    MotionWatch(MotionWatch&&) = delete;

private:
    struct System;
    std::unique_ptr<System> system_; ///< null where the system does not tell
};

} // namespace vorn
