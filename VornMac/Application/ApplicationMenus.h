#pragma once

#include "Platform/Desktop/MenuBar.h"

#include <functional>
#include <string>
#include <vector>

namespace vorn {

/// The menus of the application: its own, Edit, Window and Help. Help entries call `open` with an address, which is
/// `noticesAddress` for the third-party notices; `quit` ends the program.
std::vector<Menu> applicationMenus(const std::string& noticesAddress,
                                   const std::function<void(const std::string&)>& open,
                                   const std::function<void()>& quit);

} // namespace vorn
