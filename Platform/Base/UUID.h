#pragma once

#include <string>
#include <string_view>

namespace vorn {

/// A new random UUID (RFC 4122, version 4) in its canonical form in upper case: 36 characters with hyphens.
std::string newUUID();

/// Whether `text` is a UUID of any version, in the form that `newUUID` returns.
bool isUUID(std::string_view text) noexcept;

} // namespace vorn
