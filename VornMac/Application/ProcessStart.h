#pragma once

#include <sys/types.h>

namespace vorn {

/// How this process was started.
struct ProcessStart {
    pid_t parent = 0;
    bool hasTerminal = false; ///< standard error is one

    static ProcessStart current();

    /// Whether somebody wrote the arguments and can be told what is wrong with them: at a shell, or in a script. An
    /// application that is opened, by a double click or by "open", is a child of the first process and has no terminal;
    /// its arguments may come from the system, and it starts whatever they are.
    bool isFromShell() const noexcept { return hasTerminal || parent != 1; }
};

} // namespace vorn
