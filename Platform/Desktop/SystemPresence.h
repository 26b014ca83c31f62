#pragma once

#include "Platform/Desktop/DesktopPresence.h"

#include <functional>
#include <memory>
#include <string>

namespace vorn {

/// The names by which the desktop knows the application.
struct ApplicationNames {
    std::string identifier; ///< of the bundle; on Linux also the name of the desktop file and of the icon
    std::string name;       ///< shown to users
};

/// The user's desktop. `onClick` is called when the user clicks a notification, with the token that lets the window
/// come to the front on a Wayland desktop, empty elsewhere. Opens no connection before it needs one. On Linux this
/// thread must run a GLib main loop, such as Qt's. Threads: the main one, also for `onClick`.
std::unique_ptr<DesktopPresence> systemPresence(const ApplicationNames& names,
                                                std::function<void(const std::string& activationToken)> onClick);

} // namespace vorn
