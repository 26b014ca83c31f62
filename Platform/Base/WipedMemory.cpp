#include "Platform/Base/WipedMemory.h"

#include "Platform/Base/Memory.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>

namespace vorn::memory {

void wipe(void* block, std::size_t size) noexcept
{
    std::memset(block, 0, size);
    asm volatile("" : : "r"(block) : "memory"); // or the compiler drops writes that nothing reads
}

void wipeAndFree(void* block) noexcept
{
    if (block == nullptr) return;
    if (const std::size_t size = sizeOf(block); size <= largestWiped) wipe(block, size);
    std::free(block);
}

void* reallocateWiped(void* block, std::size_t size) noexcept
{
    void* const moved = std::malloc(std::max(size, std::size_t{1}));
    if (moved == nullptr || block == nullptr) return moved;
    std::memcpy(moved, block, std::min(size, sizeOf(block)));
    wipeAndFree(block);
    return moved;
}

} // namespace vorn::memory
