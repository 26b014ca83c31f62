#pragma once

#include <sys/types.h>

namespace vorn {

/// How this process was started.
struct ProcessStart {
    pid_t parent = 0;
    bool hasTerminal = false; ///< standard error is one

    static ProcessStart current();

    /// Whether the process was started from a shell or a script, so that wrong arguments can be reported. An
    /// application opened by double-click or "open" is a child of process 1 and has no terminal; it must start whatever
    /// its arguments are.
    bool isFromShell() const noexcept { return hasTerminal || parent != 1; }
};

} // namespace vorn
