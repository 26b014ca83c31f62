#pragma once

#include <sys/types.h>

namespace vorn {

/// How this process was started.
struct ProcessStart {
    pid_t parent = 0;
    bool hasTerminal = false; ///< standard error is one

    static ProcessStart current();

    /// Whether the process was started at a shell or by a script, so that wrong arguments can be reported. An opened
    /// application (double click, "open") is a child of the first process and has no terminal; it must start whatever
    /// its arguments are.
    bool isFromShell() const noexcept { return hasTerminal || parent != 1; }
};

} // namespace vorn
