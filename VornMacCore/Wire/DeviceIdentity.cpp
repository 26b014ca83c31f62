#include "VornMacCore/Wire/DeviceIdentity.h"

#include "Platform/Base/Text.h"

#include <cstddef>

namespace vorn {
namespace {

// The service's limits, in user-perceived characters.
constexpr std::size_t nameLimit = 80;
constexpr std::size_t versionLimit = 32;
constexpr std::size_t localeLimit = 16;

constexpr std::string_view defaultName = "Mac";

} // namespace

namespace DeviceIdentity {

CreateDeviceLinkRequest linkRequest(const Bundle& bundle)
{
    return linkRequest(bundle, computerName(), systemVersion());
}

CreateDeviceLinkRequest linkRequest(const Bundle& bundle, std::string_view computerName, const SystemVersion& system)
{
    return {
        .deviceName = text::prefixOfCharacters(computerName.empty() ? defaultName : computerName, nameLimit),
        .platform = "macos",
        .appVersion = text::prefixOfCharacters(bundle.version(), versionLimit),
        .osVersion = text::prefixOfCharacters(systemText(system), versionLimit),
    };
}

std::string computerName()
{
    if (std::string name = vorn::computerName(); !name.empty()) return name;
    return std::string(defaultName);
}

} // namespace DeviceIdentity

DeviceSignals currentDeviceSignals()
{
    return deviceSignals(timeZoneIdentifier(), localeIdentifier());
}

DeviceSignals deviceSignals(std::string_view timeZone, std::string_view locale)
{
    return {.timezone = std::string(timeZone), .locale = text::prefixOfCharacters(locale, localeLimit)};
}

} // namespace vorn
