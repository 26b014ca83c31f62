#pragma once

#include "Platform/Base/Bundle.h"

#include <string>

namespace vorn {

/// The application's property list: the running program's own, completed by what was built in. Programs without one,
/// such as those for a terminal, are the same application to the service, the keychain and the log.
const Bundle& applicationBundle();

/// The name of the keychain item and of the log.
const std::string& bundleIdentifier();

} // namespace vorn
