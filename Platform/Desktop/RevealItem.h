#pragma once

#include <filesystem>
#include <string>

namespace vorn {

/// Shows `item` selected in a window of the system's file manager, or its folder where that cannot be had. `opener` is
/// the desktop's program that opens what it is given. Waits for neither. Throws `std::system_error`.
void revealItem(const std::filesystem::path& item, const std::string& opener);

} // namespace vorn
