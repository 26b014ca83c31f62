#pragma once

#include <string>
#include <string_view>

namespace vorn {

/// Returns `text`, which must be well-formed, in a form that can be drawn: fonts show control characters as boxes or
/// not at all. Line breaks are kept, CR LF as LF; a tab becomes a space, any other control character U+FFFD. Threads:
/// any.
std::string drawable(std::string_view text);

} // namespace vorn
