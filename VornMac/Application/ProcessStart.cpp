#include "VornMac/Application/ProcessStart.h"

#include <unistd.h>

namespace vorn {

ProcessStart ProcessStart::current()
{
    return {.parent = getppid(), .hasTerminal = isatty(STDERR_FILENO) != 0};
}

} // namespace vorn
