#pragma once

#include <string>

/// What the system's own commands say about this computer, for comparison with what the product finds out without them.
namespace vorn::testing::systemTools {

std::string osVersion(); ///< such as "macOS 14.5"; on other systems with the kernel's version
std::string computerName();

} // namespace vorn::testing::systemTools
