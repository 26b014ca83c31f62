#include "Platform/Base/IDNA.h"

#include "Platform/Base/ASCII.h"

#include "Platform/Base/Fatal.h"

#include <algorithm>
#include <array>

#include <unicode/uidna.h>

namespace vorn::idna {
namespace {

/// Longer than any DNS name.
constexpr std::size_t room = 1024;

const UIDNA& standard()
{
    static const UIDNA* const made = [] {
        UErrorCode failure = U_ZERO_ERROR;
        const UIDNA* idna =
            uidna_openUTS46(UIDNA_NONTRANSITIONAL_TO_ASCII | UIDNA_CHECK_BIDI | UIDNA_CHECK_CONTEXTJ, &failure);
        if (U_FAILURE(failure)) fatalError("ICU has no data for international host names");
        return idna;
    }();
    return *made;
}

/// The standard maps "℀" to "a/c", which would end the host early.
bool mayStandInName(char c)
{
    return (c >= 'a' && c <= 'z') || ascii::isDigit(c) || c == '-' || c == '_' || c == '.';
}

} // namespace

std::optional<std::string> toASCII(std::string_view host)
{
    if (host.size() > room) return std::nullopt;
    std::array<char, room> name{};
    UIDNAInfo info = UIDNA_INFO_INITIALIZER;
    UErrorCode failure = U_ZERO_ERROR;
    const std::int32_t size =
        uidna_nameToASCII_UTF8(&standard(), host.data(), static_cast<std::int32_t>(host.size()), name.data(),
                               static_cast<std::int32_t>(name.size()), &info, &failure);
    // Names with hyphens in the third and fourth place are reserved, but in use.
    constexpr std::uint32_t allowed = UIDNA_ERROR_HYPHEN_3_4;
    if (U_FAILURE(failure) || (info.errors & ~allowed) != 0) return std::nullopt;
    std::string ascii(name.data(), static_cast<std::size_t>(size));
    if (!std::ranges::all_of(ascii, mayStandInName)) return std::nullopt;
    return ascii;
}

} // namespace vorn::idna
