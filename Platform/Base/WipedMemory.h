#pragma once

#include <cstddef>

/// Memory that holds nothing once it is freed. Threads: any.
namespace vorn::memory {

/// Freed blocks of this size and less are wiped: no token is in a larger one, but copies of whole chats are, and pages
/// that nobody has touched.
inline constexpr std::size_t largestWiped = std::size_t{8} * 1024 * 1024;

/// Overwrites `size` bytes, in a way that the compiler cannot leave out.
void wipe(void* block, std::size_t size) noexcept;

// In place of `free` and `realloc`, for blocks of `malloc`.

void wipeAndFree(void* block) noexcept;
/// Always moves the block: `realloc` may, and would leave what was there. Returns null, and leaves the block, when
/// there is no memory left.
void* reallocateWiped(void* block, std::size_t size) noexcept;

} // namespace vorn::memory
