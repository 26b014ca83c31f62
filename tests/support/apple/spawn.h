#pragma once

// Stand-in for what only macOS has in this header.

#include_next <spawn.h>

/// The real one closes every file that no action opens; this one does nothing.
#define POSIX_SPAWN_CLOEXEC_DEFAULT 0
