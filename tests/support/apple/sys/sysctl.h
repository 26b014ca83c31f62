#pragma once

// Stand-in for reading the system's values by name.

#include <cstddef>

extern "C" int sysctlbyname(const char* name, void* old, std::size_t* oldSize, void* new_, std::size_t newSize);
