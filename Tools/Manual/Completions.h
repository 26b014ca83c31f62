#pragma once

#include "Tools/Manual/CommandDescription.h"

#include <string>

namespace vorn {

// Completion scripts, one for each shell: for the options and commands of `program`, and for values of a known kind.

std::string bashCompletion(const CommandDescription& program);
std::string zshCompletion(const CommandDescription& program);
std::string fishCompletion(const CommandDescription& program);

} // namespace vorn
