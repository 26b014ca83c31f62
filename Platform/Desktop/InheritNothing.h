#pragma once

#include <spawn.h>

namespace vorn {

/// Closes every file in the program to be started but its standard streams. `flags` are those that the attributes will
/// get.
void inheritNothing(posix_spawn_file_actions_t& actions, short& flags);

} // namespace vorn
