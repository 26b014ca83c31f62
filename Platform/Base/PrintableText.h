#pragma once

#include <string>
#include <string_view>

namespace vorn {

/// `foreign` made safe for a terminal: control characters (line breaks and escape sequences among them) and marks that
/// reorder text become one U+FFFD each; invisible characters, which could hide a second text, are removed. More than
/// 300 characters are cut and end in "…". Threads: any.
std::string printable(std::string_view foreign);

/// The same, of any length.
std::string printableWhole(std::string_view foreign);

} // namespace vorn
