#pragma once

#include "Platform/Desktop/DesktopPresence.h"

#include <functional>
#include <memory>
#include <string>

namespace vorn {

/// Under which names the desktop knows the application.
struct ApplicationNames {
    std::string identifier; ///< of the bundle; on Linux also the name of the desktop file and of the icon
    std::string name;       ///< for users
};

/// The user's desktop. `onClick` is called when the user clicks a notification, with the token by which a Wayland
/// desktop lets the window come to the front; empty elsewhere. Connects to nothing before it is needed. On Linux a GLib
/// main loop, as Qt's is, must run on this thread. Threads: the main one, `onClick` included.
std::unique_ptr<DesktopPresence> systemPresence(const ApplicationNames& names,
                                                std::function<void(const std::string& activationToken)> onClick);

} // namespace vorn
