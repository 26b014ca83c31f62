#pragma once

#include "Tools/Manual/CommandDescription.h"

#include <string>

namespace vorn {

// What a shell reads to complete the options and commands of `program`, and the values of which it knows something.

std::string bashCompletion(const CommandDescription& program);
std::string zshCompletion(const CommandDescription& program);
std::string fishCompletion(const CommandDescription& program);

} // namespace vorn
