#pragma once

#include "Platform/Desktop/DesktopPresence.h"
#include "Platform/Desktop/SystemPresence.h"
#include "Platform/Desktop/linux/MessageBus.h"

#include <cstdint>
#include <functional>
#include <string>

namespace vorn {

/// Shows one notification at a time through the desktop's service (freedesktop.org's "Desktop Notifications
/// Specification"). Threads: the bus's.
class BusNotifications {
public:
    /// `session` outlives this object.
    BusNotifications(MessageBus& session, ApplicationNames names,
                     std::function<void(const std::string& token)> onClick);
    BusNotifications(BusNotifications&&) = delete;

    void show(const Notification& notification);
    void withdraw();

private:
    void send(const Notification& notification, GVariant* capabilities);
    void close(std::uint32_t id);
    void onSignal(const std::string& signal, GVariant* arguments);

    MessageBus& session_;
    const ApplicationNames names_;
    const std::function<void(const std::string&)> onClick_;
    std::uint64_t generation_ = 0; ///< counts `show` and `withdraw`, so that answers to outdated calls show nothing
    std::uint32_t shown_ = 0;      ///< the notification's id in the service; 0 for none
    std::string token_;
};

} // namespace vorn
