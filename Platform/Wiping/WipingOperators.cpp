#include "Platform/Base/WipedMemory.h"

#include <cstddef>
#include <cstdlib>
#include <new>

// Tokens are copied into many objects: bodies, the parser's tree, records, coroutines, headers. All of them
// free their memory through these operators, so none has to know what it held. The standard library's other forms,
// except the aligned ones, call these.

void* operator new(std::size_t size)
{
    while (true) {
        if (void* const block = std::malloc(size == 0 ? 1 : size)) return block;
        const std::new_handler handler = std::get_new_handler();
        if (handler == nullptr) throw std::bad_alloc();
        handler();
    }
}

void operator delete(void* block) noexcept
{
    vorn::memory::wipeAndFree(block);
}

void operator delete(void* block, std::size_t /*size*/) noexcept
{
    vorn::memory::wipeAndFree(block);
}
