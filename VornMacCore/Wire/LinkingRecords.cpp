#include "VornMacCore/Wire/LinkingRecords.h"

#include "VornMacCore/Wire/WireDate.h"

#include <array>
#include <utility>

namespace vorn {

std::optional<Instant> DeviceLink::expiresAtDate() const noexcept
{
    return WireDate::parse(expiresAt);
}

DeviceLinkStatus deviceLinkStatus(std::string_view name) noexcept
{
    using enum DeviceLinkStatus;
    static constexpr std::array<std::pair<std::string_view, DeviceLinkStatus>, 5> names{{
        {"pending", pending},
        {"scanned", scanned},
        {"approved", approved},
        {"rejected", rejected},
        {"expired", expired},
    }};
    for (const auto& [known, status] : names) {
        if (name == known) return status;
    }
    return expired;
}

} // namespace vorn
