#pragma once

#include <filesystem>
#include <string>

namespace vorn {

/// Shows `item` selected in the file manager, or opens its folder with the program `opener` if there is none. Does not
/// wait. Throws `std::system_error`.
void revealItem(const std::filesystem::path& item, const std::string& opener);

} // namespace vorn
