#include "Platform/Base/UUID.h"

#include <array>

#include <uuid/uuid.h>

namespace vorn {

std::string newUUID()
{
    uuid_t bytes;
    uuid_generate_random(bytes);
    std::array<char, 37> text{}; // 36 characters and the NUL that the call writes
    uuid_unparse_upper(bytes, text.data());
    return text.data();
}

} // namespace vorn
