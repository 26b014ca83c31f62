#pragma once

#include <string>

namespace vorn {

/// A new random UUID (RFC 4122, version 4) in its canonical form in upper case: 36 characters with hyphens.
std::string newUUID();

} // namespace vorn
