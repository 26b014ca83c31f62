#pragma once

#include <string>

namespace vorn {

/// The address of the user's session bus: `DBUS_SESSION_BUS_ADDRESS`, else the socket "bus" in `XDG_RUNTIME_DIR`. Empty
/// when there is none: a bus started just for asking would know no keyring. Threads: any.
std::string sessionBusAddress();

} // namespace vorn
