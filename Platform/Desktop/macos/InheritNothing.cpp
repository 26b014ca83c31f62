#include "Platform/Desktop/InheritNothing.h"

namespace vorn {

void inheritNothing(posix_spawn_file_actions_t& /*actions*/, short& flags)
{
    flags = static_cast<short>(flags | POSIX_SPAWN_CLOEXEC_DEFAULT); // closes all but what the actions open
}

} // namespace vorn
