#pragma once

#include <spawn.h>

namespace vorn {

/// Makes the spawned program inherit no open files but its standard streams. `flags` are those set on the attributes.
void inheritNothing(posix_spawn_file_actions_t& actions, short& flags);

} // namespace vorn
