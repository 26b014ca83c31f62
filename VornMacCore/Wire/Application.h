#pragma once

#include "Platform/Base/Bundle.h"

#include <string>

namespace vorn {

/// The application's property list: the running program's own, completed by built-in values. Programs without one, such
/// as command-line tools, are the same application to the service, to the log and, except on macOS, to the keychain.
const Bundle& applicationBundle();

/// The log's subsystem, and the service of the keychain item, to which programs outside a bundle append ".terminal" on
/// macOS.
const std::string& bundleIdentifier();

} // namespace vorn
