#pragma once

// Stand-in for the system's facts by name.

#include <cstddef>

extern "C" int sysctlbyname(const char* name, void* old, std::size_t* oldSize, void* new_, std::size_t newSize);
