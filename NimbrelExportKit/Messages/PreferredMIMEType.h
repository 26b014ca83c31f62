#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace vorn {

/// The preferred MIME type of a uniform type identifier such as "public.jpeg"; nothing when the identifier is unknown
/// or has none. From the system's database on macOS, elsewhere from `DeclaredTypes.inc`.
/// Threads: any.
std::optional<std::string> preferredMIMEType(std::string_view typeIdentifier);

} // namespace vorn
