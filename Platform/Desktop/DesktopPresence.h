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

/// What the desktop shows of the application outside its window. Every call returns at once, and does nothing where the
/// desktop lacks the feature. Threads: the main one.
class DesktopPresence {
public:
    virtual ~DesktopPresence() = default;

    /// Asks the user for permission to notify, where the system requires it and has not asked before.
    virtual void askToNotify() = 0;
    /// Shows `notification` in place of the previous one.
    virtual void notify(const Notification& notification) = 0;
    /// Removes what `notify` showed.
    virtual void withdrawNotification() = 0;

    /// Keeps the computer from going to sleep and the process from being slowed down, until `allowSleep`. `reason` is
    /// shown to users who look up what keeps their computer awake.
    virtual void stayAwake(const std::string& reason) = 0;
    virtual void allowSleep() = 0;

    /// Shows a progress bar on the application's icon, 0…100, or none.
    virtual void showProgress(std::optional<int> percent) = 0;

    /// Plays a soft sound, unless the user has switched such sounds off. On Linux only notifications have sounds.
    virtual void playSound() = 0;
};

} // namespace vorn
