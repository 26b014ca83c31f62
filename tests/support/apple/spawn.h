#pragma once

// Stand-in for what the system adds to its header.

#include_next <spawn.h>

/// The real one closes every file that no action opens; here it says nothing.
#define POSIX_SPAWN_CLOEXEC_DEFAULT 0
