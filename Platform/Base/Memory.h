#pragma once

#include <cstddef>
#include <limits>
#include <new>

/// Memory by the hundred megabytes. Threads: any.
namespace vorn::memory {

/// Memory for `size` bytes, for which the system is asked to use its large pages when the block is large: touching a
/// gigabyte for the first time in small ones costs a quarter of a second more. Throws `std::bad_alloc`.
void* allocate(std::size_t size);

/// Frees what `allocate` gave.
void release(void* block) noexcept;

/// Gives memory that has been freed, but that the process still holds, back to the system. Worth calling after work
/// that freed hundreds of megabytes in small pieces.
void returnFreed() noexcept;

/// An allocator for containers that grow large.
template <class T>
struct LargeBlockAllocator {
    using value_type = T; // NOLINT(readability-identifier-naming): the standard's name

    LargeBlockAllocator() = default;
    template <class U>
    LargeBlockAllocator(
        const LargeBlockAllocator<U>& /*other*/) noexcept // NOLINT(google-explicit-constructor): required
    {
    }

    T* allocate(std::size_t count)
    {
        if (count > std::numeric_limits<std::size_t>::max() / sizeof(T)) throw std::bad_array_new_length();
        return static_cast<T*>(memory::allocate(count * sizeof(T)));
    }
    void deallocate(T* block, std::size_t /*count*/) noexcept { memory::release(block); }

    bool operator==(const LargeBlockAllocator&) const = default;
};

} // namespace vorn::memory
