#include "VornMacCore/Wire/WireDate.h"

namespace vorn::WireDate {

std::optional<Instant> parse(const std::optional<std::string>& text) noexcept
{
    // RFC 3339 also lets applications agree on "t", "z" and a space; ISO 8601, which the service promises, has none.
    if (!text || text->find_first_of("tz ") != std::string::npos) return std::nullopt;
    return parseInternetDateTime(*text);
}

} // namespace vorn::WireDate
