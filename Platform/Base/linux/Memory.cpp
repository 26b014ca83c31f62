#include "Platform/Base/Memory.h"

#include <cstdlib>

#include <malloc.h>
#include <sys/mman.h>
#include <sys/prctl.h>
#include <sys/resource.h>

namespace vorn::memory {
namespace {

constexpr std::size_t largePage = 2 * 1024 * 1024;

} // namespace

void keepPrivate() noexcept
{
    rlimit core{};
    if (getrlimit(RLIMIT_CORE, &core) == 0) {
        core.rlim_cur = 0;
        setrlimit(RLIMIT_CORE, &core);
    }
    prctl(PR_SET_DUMPABLE, 0); // the system may pipe core dumps to a program, whatever the limit
}

void* allocate(std::size_t size)
{
    const bool isLarge = size >= largeBlock;
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
    return malloc_usable_size(const_cast<void*>(block)); // only reads the block
}

void returnFreed() noexcept
{
    malloc_trim(0);
}

} // namespace vorn::memory
