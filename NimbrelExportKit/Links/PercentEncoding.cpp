#include "NimbrelExportKit/Links/PercentEncoding.h"

#include "NimbrelExportKit/Links/Scalars.h"

#include <algorithm>
#include <array>

namespace vorn::links {
namespace {

/// Characters that are never encoded; for '%', '#', '[' and ']' it depends on their position.
constexpr auto plain = [] {
    std::array<bool, 256> table{};
    for (unsigned c = 0; c < 0x80; ++c) table[c] = isAlphanumeric(c);
    for (const char c : std::string_view("-._~:/?@!$&'()*+,;=")) table[static_cast<unsigned char>(c)] = true;
    return table;
}();

bool isPlain(char c)
{
    return plain[static_cast<unsigned char>(c)];
}

bool beginsEscape(std::string_view rest)
{
    return rest.size() >= 3 && rest[0] == '%' && isHexDigit(rest[1]) && isHexDigit(rest[2]);
}

void appendEscaped(char c, std::string& url)
{
    constexpr std::string_view digits = "0123456789ABCDEF";
    const auto byte = static_cast<unsigned char>(c);
    url += {'%', digits[byte >> 4U], digits[byte & 0xFU]};
}

/// The end of an absolute address's authority; 0 for an address without a scheme, whose host has no brackets.
std::size_t authorityEnd(std::string_view address)
{
    const std::size_t colon =
        std::min(address.find_first_of(":/?#"), address.size()); // not find("://"): a query may contain an address
    if (!address.substr(colon).starts_with("://")) return 0;
    return std::min(address.find_first_of("/?#", colon + 3), address.size());
}

} // namespace

void appendPercentEncoded(std::string_view address, std::string& url)
{
    if (std::ranges::all_of(address, isPlain)) {
        url += address;
        return;
    }
    const std::size_t hostEnd = authorityEnd(address);
    const std::size_t fragment = address.find('#');
    for (std::size_t at = 0; at < address.size(); ++at) {
        const char c = address[at];
        const bool stays = isPlain(c) || beginsEscape(address.substr(at)) || ((c == '[' || c == ']') && at < hostEnd) ||
                           (c == '#' && at == fragment);
        if (stays) {
            url += c;
        } else {
            appendEscaped(c, url);
        }
    }
}

} // namespace vorn::links
