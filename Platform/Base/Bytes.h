#pragma once

#include "Platform/Base/Memory.h"

#include <cstddef>
#include <span>
#include <string_view>
#include <utility>
#include <vector>

namespace vorn {

/// A view of bytes that it does not own.
using ByteView = std::span<const std::byte>;

/// An allocator that leaves new elements uninitialised. A buffer of hundreds of megabytes that is about to be
/// filled would otherwise be written twice, and its untouched tail would count as memory in use.
template <class T>
struct UninitializedAllocator : memory::LargeBlockAllocator<T> {
    template <class U>
    struct rebind { // NOLINT(readability-identifier-naming): the standard's name
        using other = UninitializedAllocator<U>;
    };

    using memory::LargeBlockAllocator<T>::LargeBlockAllocator;

    template <class U>
    void construct(U* at) noexcept
    {
        ::new (static_cast<void*>(at)) U;
    }
    template <class U, class... Args>
    void construct(U* at, Args&&... args)
    {
        ::new (static_cast<void*>(at)) U(std::forward<Args>(args)...);
    }
};

/// Owned bytes. `resize` does not clear what it adds.
using ByteBuffer = std::vector<std::byte, UninitializedAllocator<std::byte>>;

inline ByteView bytesOf(std::string_view text) noexcept
{
    return std::as_bytes(std::span(text.data(), text.size()));
}

inline std::string_view textOf(ByteView bytes) noexcept
{
    return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

} // namespace vorn
