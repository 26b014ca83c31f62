#pragma once

#include <filesystem>

namespace vorn {

/// Where this user's processes meet: `XDG_RUNTIME_DIR` where it is as it should be, else the folder "vorn-<user's
/// number>" in the temporary directory, which is made if it is missing. Nobody else may enter it; one that others could
/// have made is refused. Throws `std::system_error`.
std::filesystem::path runtimeFolder();

} // namespace vorn
