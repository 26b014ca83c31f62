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

bool isUUID(std::string_view text) noexcept
{
    constexpr std::string_view form = "00000000-0000-0000-0000-000000000000";
    if (text.size() != form.size()) return false;
    for (std::size_t at = 0; at < form.size(); ++at) {
        const bool isDigit = std::string_view("0123456789ABCDEF").find(text[at]) != std::string_view::npos;
        if (form[at] == '-' ? text[at] != '-' : !isDigit) return false;
    }
    return true;
}

} // namespace vorn
