#pragma once

#include <string>
#include <string_view>

namespace vorn {

/// `foreign` made safe for a terminal: control characters (line breaks and the start of escape sequences among them)
/// and marks that reorder text become one U+FFFD each; invisible characters, which could hide text, are removed. Text
/// of more than 300 characters is cut and ends in "…". Threads: any.
std::string printable(std::string_view foreign);

/// The same, without cutting.
std::string printableWhole(std::string_view foreign);

} // namespace vorn
