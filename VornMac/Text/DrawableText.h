#pragma once

#include <string>
#include <string_view>

namespace vorn {

/// Returns `text`, well-formed, as it can be drawn: fonts have boxes for control characters, or nothing. Line breaks
/// are kept, a tab is a space, and other control characters become U+FFFD. Threads: any.
std::string drawable(std::string_view text);

} // namespace vorn
