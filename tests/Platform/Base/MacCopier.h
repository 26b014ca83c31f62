#pragma once

namespace vorn::testing {

/// Doubles of macOS's copy functions, which work on ordinary files with the traps of the real ones. Threads: one.
struct MacCopier {
    bool clones = true;       ///< whether the file system can clone
    bool locksClones = false; ///< as clones of a locked file: unchangeable until their flags are cleared
    int writeError = 0;       ///< the error of writes; 0 for none

    // What happened.
    int clonesMade = 0;
    int pieces = 0;
    bool locked = false;
    bool wentOnAfterError = false; ///< which would repeat forever
};

/// The copier of this program; changes to it take effect at once.
MacCopier& macCopier();

} // namespace vorn::testing
