#pragma once

#include <optional>
#include <string>

namespace vorn {

struct Notification {
    std::string title;
    std::string body;   ///< plain text
    std::string action; ///< what a click does, in words
    bool hasSound = false;
    bool operator==(const Notification&) const = default;
};

/// What the desktop shows of the application outside its window. Every call returns at once, and nothing happens where
/// the desktop has no such thing. Threads: the main one.
class DesktopPresence {
public:
    virtual ~DesktopPresence() = default;

    /// Asks the user for permission to notify, where the system wants that and has not asked before.
    virtual void askToNotify() = 0;
    /// Shows `notification` in place of the one before.
    virtual void notify(const Notification& notification) = 0;
    /// Takes back what `notify` showed.
    virtual void withdrawNotification() = 0;

    /// Keeps the computer from falling asleep and the process from being slowed down, until `allowSleep`. `reason` is
    /// for users who ask what keeps their computer awake.
    virtual void stayAwake(const std::string& reason) = 0;
    virtual void allowSleep() = 0;

    /// Shows a bar on the application's icon, 0…100, or none.
    virtual void showProgress(std::optional<int> percent) = 0;

    /// Plays a soft sound, unless the user has switched such sounds off. Linux has none without a notification.
    virtual void playSound() = 0;
};

} // namespace vorn
