#pragma once

// The part of the system's header that only macOS has.

#include_next <sys/stat.h>

#include <cstdint>

extern "C" int fchflags(int file, std::uint32_t flags);
