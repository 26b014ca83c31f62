#pragma once

#include <filesystem>
#include <string>

namespace vorn {

/// Shows `item` selected in the file manager; on macOS through the program `opener`. If no file manager answers on
/// Linux, opens the folder of `item` with `opener`. Does not wait. Throws `std::system_error`.
void revealItem(const std::filesystem::path& item, const std::string& opener);

} // namespace vorn
