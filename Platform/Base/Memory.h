#pragma once

#include <cstddef>
#include <limits>
#include <new>

/// The memory of this process: allocation for very large buffers, and who may read it. Threads: any.
namespace vorn::memory {

/// Disables core dumps. On Linux no other process can read this one's memory either, debuggers and the user's own
/// programs included. Call it at the start of a program that holds tokens or messages. Child processes can be read
/// again, but leave no core dump unless they ask for one.
void keepPrivate() noexcept;

/// Allocates `size` bytes, on large pages if the block is large: first touching a gigabyte in small ones takes a
/// quarter of a second longer. Throws `std::bad_alloc`.
void* allocate(std::size_t size);

/// Frees a block from `allocate`.
void release(void* block) noexcept;

/// Returns how many bytes the block of `malloc` at `block` has, at least those that were asked for.
std::size_t sizeOf(const void* block) noexcept;

/// Returns freed memory that the process still holds to the system. Worth it after freeing hundreds of megabytes in
/// small pieces.
void returnFreed() noexcept;

/// For containers that grow large.
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
