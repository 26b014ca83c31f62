#pragma once

#include <cstddef>

/// Memory that is wiped before it is freed. Threads: any.
namespace vorn::memory {

/// Freed blocks of up to this size are wiped. Larger ones hold no tokens, but copies of whole chats, and pages that
/// were never touched.
inline constexpr std::size_t largestWiped = std::size_t{8} * 1024 * 1024;

/// Overwrites `size` bytes in a way that the compiler cannot optimise away.
void wipe(void* block, std::size_t size) noexcept;

// In place of `free` and `realloc`, for blocks of `malloc`.

void wipeAndFree(void* block) noexcept;
/// Always moves the block: `realloc` may move it without wiping the old one. Returns null, and leaves the block as it
/// is, when memory runs out.
void* reallocateWiped(void* block, std::size_t size) noexcept;

} // namespace vorn::memory
