#include "Platform/Desktop/InheritNothing.h"

#include <unistd.h>

namespace vorn {

void inheritNothing(posix_spawn_file_actions_t& actions, short& /*flags*/)
{
    posix_spawn_file_actions_addclosefrom_np(&actions, STDERR_FILENO + 1);
}

} // namespace vorn
