#pragma once

// What the system's header has on macOS alone.

#include_next <sys/stat.h>

#include <cstdint>

extern "C" int fchflags(int file, std::uint32_t flags);
