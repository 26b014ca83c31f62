#pragma once

#include <string>

namespace vorn {

/// The address of the user's session bus: `DBUS_SESSION_BUS_ADDRESS` without "autolaunch:" (a new bus would have no
/// services), else the socket "bus" in `XDG_RUNTIME_DIR`, else empty. Threads: any.
std::string sessionBusAddress();

} // namespace vorn
