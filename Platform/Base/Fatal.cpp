#include "Platform/Base/Fatal.h"

#include <cstdio>
#include <cstdlib>

namespace vorn {

void fatalError(std::string_view reason) noexcept
{
    std::fprintf(stderr, "fatal error: %.*s\n", static_cast<int>(reason.size()), reason.data());
    std::abort();
}

} // namespace vorn
