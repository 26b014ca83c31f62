#include "NimbrelExportKit/Links/TopLevelDomains.h"

#include "NimbrelExportKit/Links/Scalars.h"
#include "Platform/Base/ASCII.h"
#include "Platform/Base/Text.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <string>

namespace vorn::links {
namespace {

constexpr auto names = std::to_array<std::string_view>({
#include "NimbrelExportKit/Links/TopLevelDomains.inc"
});
static_assert(std::ranges::is_sorted(names), "the look-up is a binary search");
static_assert(names.size() < UINT16_MAX);

constexpr std::size_t longestName = std::ranges::max(names, {}, &std::string_view::size).size();

/// For each first byte, the index of the first name that begins with it; the next entry is the end of those names.
constexpr auto firstByteIndex = [] {
    std::array<std::uint16_t, 257> index{};
    for (const std::string_view name : names) ++index[static_cast<unsigned char>(name.front()) + 1U];
    for (std::size_t byte = 1; byte < index.size(); ++byte) {
        index[byte] = static_cast<std::uint16_t>(index[byte] + index[byte - 1]);
    }
    return index;
}();

bool isListed(std::string_view lowerCase)
{
    if (lowerCase.empty()) return false;
    const auto byte = static_cast<unsigned char>(lowerCase.front());
    return std::binary_search(names.begin() + firstByteIndex[byte], names.begin() + firstByteIndex[byte + 1U],
                              lowerCase);
}

} // namespace

bool isTopLevelDomain(std::string_view label)
{
    if (label.size() > longestName) return false;
    std::array<char, longestName> lower; // NOLINT: filled below as far as it is read
    for (std::size_t i = 0; i < label.size(); ++i) {
        const char c = label[i];
        if (!isASCII(c)) return isListed(text::lowercased(label));
        lower[i] = ascii::lowercased(c);
    }
    return isListed({lower.data(), label.size()});
}

std::size_t unspacedTopLevelDomainPrefix(std::string_view text)
{
    std::size_t longest = 0;
    for (std::size_t end = 0; end < text.size() && end <= longestName;) {
        const Scalar scalar = scalarAt(text, end);
        if (scriptOf(scalar.value) != Script::unspaced) break;
        end += scalar.size;
        if (isListed(text.substr(0, end))) longest = end;
    }
    return longest;
}

} // namespace vorn::links
