#pragma once

#include <string>
#include <string_view>

namespace vorn {

/// The value of PRETTY_HOSTNAME in the text of a machine-info file, whose lines are shell assignments
/// (machine-info(5)); empty without one. The last assignment counts.
std::string prettyHostName(std::string_view machineInfo);

/// The pretty host name, else `hostName`; empty for the kernel's "(none)".
std::string computerName(std::string_view machineInfo, std::string_view hostName);

} // namespace vorn
