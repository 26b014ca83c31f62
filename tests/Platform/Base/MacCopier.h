#pragma once

namespace vorn::testing {

/// How the functions behave that macOS copies files with: in this test program they work on ordinary files, with the
/// traps of the real ones. Threads: one.
struct MacCopier {
    bool clones = true;       ///< else the file system cannot
    bool locksClones = false; ///< as clones of a locked file are: nothing about one changes until its flags are cleared
    int writeError = 0;       ///< what writes fail with, unless 0

    // What happened.
    int clonesMade = 0;
    int pieces = 0;
    bool locked = false;
    bool wentOnAfterError = false; ///< for ever, had the copier not given up
};

/// The behaviour from now on.
MacCopier& macCopier();

} // namespace vorn::testing
