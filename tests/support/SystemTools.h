#pragma once

#include <string>

/// What the system's own commands say of this computer, to hold against what the product finds out without them.
namespace vorn::testing::systemTools {

std::string osVersion(); ///< such as "macOS 14.5"; elsewhere than on macOS with the kernel's version
std::string computerName();

} // namespace vorn::testing::systemTools
