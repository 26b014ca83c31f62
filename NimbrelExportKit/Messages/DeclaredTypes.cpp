#include "NimbrelExportKit/Messages/DeclaredTypes.h"

#include "Platform/Base/ASCII.h"

#include <algorithm>
#include <array>

namespace vorn {
namespace {

struct DeclaredType {
    std::string_view identifier;
    std::string_view mimeType;
};

constexpr auto declaredTypes = std::to_array<DeclaredType>({
#include "NimbrelExportKit/Messages/DeclaredTypes.inc"
});
static_assert(std::ranges::is_sorted(declaredTypes, {}, &DeclaredType::identifier), "the look-up is a binary search");

} // namespace

std::optional<std::string> declaredMIMEType(std::string_view typeIdentifier)
{
    const std::string identifier = ascii::lowercased(typeIdentifier);
    const auto row =
        std::ranges::lower_bound(declaredTypes, std::string_view(identifier), {}, &DeclaredType::identifier);
    if (row == declaredTypes.end() || row->identifier != identifier) return std::nullopt;
    return std::string(row->mimeType);
}

} // namespace vorn
