#pragma once

#include "Tools/Manual/CommandDescription.h"

#include <string>

namespace vorn {

// Completions of the options and commands of `program`, and of values of a known kind, one for each shell.

std::string bashCompletion(const CommandDescription& program);
std::string zshCompletion(const CommandDescription& program);
std::string fishCompletion(const CommandDescription& program);

} // namespace vorn
