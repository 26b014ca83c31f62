#pragma once

#include <string>
#include <string_view>

namespace vorn {

/// The value of PRETTY_HOSTNAME in the text of a machine-info file, whose lines are assignments quoted as in a shell
/// (machine-info(5)); empty when it says none. The last assignment counts.
std::string prettyHostName(std::string_view machineInfo);

/// The pretty host name, else `hostName`; empty when a host has no name, which the kernel calls "(none)".
std::string computerName(std::string_view machineInfo, std::string_view hostName);

} // namespace vorn
