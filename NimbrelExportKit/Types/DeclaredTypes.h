#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace vorn {

/// The MIME type that `typeIdentifier` is declared with in the table of this folder; nothing when the table has none.
/// Identifiers compare without regard to the case of ASCII letters, as uniform type identifiers do. Threads: any.
std::optional<std::string> declaredMIMEType(std::string_view typeIdentifier);

} // namespace vorn
