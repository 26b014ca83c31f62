#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace vorn {

/// The MIME type of `typeIdentifier` in `DeclaredTypes.inc`; nothing when it has none. Ignores the case of ASCII
/// letters, as uniform type identifiers do. Threads: any.
std::optional<std::string> declaredMIMEType(std::string_view typeIdentifier);

} // namespace vorn
