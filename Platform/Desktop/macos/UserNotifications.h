#pragma once

#include "Platform/Desktop/DesktopPresence.h"

#include <functional>

#import <Foundation/Foundation.h>

@class VornNotifications;

namespace vorn {

/// Shows one notification at a time in Notification Center. Does nothing in a process without a bundle, which has no
/// such center. Threads: the main one.
class UserNotifications {
public:
    explicit UserNotifications(std::function<void()> onClick);
    ~UserNotifications();
    UserNotifications(UserNotifications&&) = delete;

    /// Asks the user, the first time; the system remembers the answer.
    void ask();
    void show(const Notification& notification);
    void withdraw();

private:
    VornNotifications* notifications_; ///< keeps the delegate alive, which the center does not
};

} // namespace vorn
