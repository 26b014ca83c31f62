#pragma once

#include <cstddef>
#include <limits>
#include <new>

/// The memory of this process: allocation for very large buffers, and who may read it. Threads: any.
namespace vorn::memory {

/// Disables core dumps. On Linux also keeps the user's other processes, debuggers included, from reading this one's
/// memory. Call it at the start of a program that holds tokens or messages. Child programs can be read again, but leave
/// no core dump unless they ask for one.
void keepPrivate() noexcept;

/// Blocks of this size and more are large.
inline constexpr std::size_t largeBlock = std::size_t{8} * 1024 * 1024;

/// Allocates `size` bytes, on large pages if the block is large: touching a gigabyte for the first time takes a quarter
/// of a second longer in small ones. Throws `std::bad_alloc`.
void* allocate(std::size_t size);

/// Frees a block from `allocate`.
void release(void* block) noexcept;

/// The usable size in bytes of the block that `malloc` returned: at least what was asked for.
std::size_t sizeOf(const void* block) noexcept;

/// Returns to the system the freed memory that the process still holds. Worth it after freeing hundreds of megabytes in
/// small pieces.
void returnFreed() noexcept;

/// An allocator for containers that grow large. Smaller blocks come from `operator new`: a program that replaces
/// `operator delete` to wipe what it frees wipes them too.
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
        return static_cast<T*>(isLarge(count) ? memory::allocate(count * sizeof(T))
                                              : ::operator new(count * sizeof(T)));
    }
    void deallocate(T* block, std::size_t count) noexcept
    {
        isLarge(count) ? memory::release(block) : ::operator delete(block);
    }

    bool operator==(const LargeBlockAllocator&) const = default;

private:
    static_assert(alignof(T) <= __STDCPP_DEFAULT_NEW_ALIGNMENT__);

    static bool isLarge(std::size_t count) noexcept { return count * sizeof(T) >= largeBlock; }
};

} // namespace vorn::memory
