#pragma once

#include <spawn.h>

namespace vorn {

/// Makes a spawned program inherit no open files but its standard streams. May add to `flags`, those of its attributes.
void inheritNothing(posix_spawn_file_actions_t& actions, short& flags);

} // namespace vorn
