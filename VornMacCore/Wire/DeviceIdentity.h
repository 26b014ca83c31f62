#pragma once

#include "Platform/Base/Bundle.h"
#include "Platform/Base/SystemFacts.h"
#include "VornMacCore/Wire/WireRecords.h"

#include <string>
#include <string_view>

/// Everything that this computer tells the service about itself; none of it is stored. Limits count user-perceived
/// characters. Threads: any.
namespace vorn::DeviceIdentity {

/// Describes the computer that asks to be linked. `bundle` is the application's.
CreateDeviceLinkRequest linkRequest(const Bundle& bundle);

/// The same from given facts; cuts the name to 80 characters and each version to 32.
CreateDeviceLinkRequest linkRequest(const Bundle& bundle, std::string_view computerName, const SystemVersion& system);

/// Returns the name that the user gave this computer, else its host name; "Mac" without either.
std::string computerName();

} // namespace vorn::DeviceIdentity

namespace vorn {

/// This computer's current time zone and locale.
DeviceSignals currentDeviceSignals();

/// The same from given facts; the locale is cut to 16 characters.
DeviceSignals deviceSignals(std::string_view timeZone, std::string_view locale);

} // namespace vorn
