#include "Platform/Base/Memory.h"

#include <cstdlib>

#include <malloc/malloc.h>
#include <sys/resource.h>

namespace vorn::memory {

void keepPrivate() noexcept
{
    rlimit core{};
    if (getrlimit(RLIMIT_CORE, &core) == 0) {
        core.rlim_cur = 0;
        setrlimit(RLIMIT_CORE, &core);
    }
}

void* allocate(std::size_t size)
{
    void* block = std::malloc(size); // the system chooses its page size itself
    if (block == nullptr && size > 0) throw std::bad_alloc();
    return block;
}

void release(void* block) noexcept
{
    std::free(block);
}

std::size_t sizeOf(const void* block) noexcept
{
    return malloc_size(block);
}

void returnFreed() noexcept
{
    malloc_zone_pressure_relief(nullptr, 0);
}

} // namespace vorn::memory
