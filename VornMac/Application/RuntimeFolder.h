#pragma once

#include <filesystem>

namespace vorn {

/// The folder for sockets and locks of this user's processes: `XDG_RUNTIME_DIR` if it is private, else "vorn-<user id>"
/// in the temporary directory, created if missing. Throws `std::system_error`, also if the latter is not private to
/// this user.
std::filesystem::path runtimeFolder();

} // namespace vorn
