#pragma once

#include <string>
#include <string_view>

namespace vorn {

/// Returns `text`, which must be well-formed, in a form that can be drawn: for control characters fonts have boxes, or
/// nothing. Line breaks are kept, a tab becomes a space, and other control characters become U+FFFD. Threads: any.
std::string drawable(std::string_view text);

} // namespace vorn
