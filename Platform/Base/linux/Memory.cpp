#include "Platform/Base/Memory.h"

#include <cstdlib>

#include <malloc.h>
#include <sys/mman.h>

namespace vorn::memory {
namespace {

constexpr std::size_t largePage = 2 * 1024 * 1024;
constexpr std::size_t worthLargePages = 4 * largePage;

} // namespace

void* allocate(std::size_t size)
{
    const bool isLarge = size >= worthLargePages;
    const std::size_t whole = isLarge ? (size + largePage - 1) / largePage * largePage : size;
    void* block = isLarge ? std::aligned_alloc(largePage, whole) : std::malloc(size);
    if (block == nullptr && size > 0) throw std::bad_alloc();
    if (isLarge) madvise(block, whole, MADV_HUGEPAGE); // a hint; failure does no harm
    return block;
}

void release(void* block) noexcept
{
    std::free(block);
}

std::size_t sizeOf(const void* block) noexcept
{
    return malloc_usable_size(const_cast<void*>(block)); // reads it alone
}

void returnFreed() noexcept
{
    malloc_trim(0);
}

} // namespace vorn::memory
