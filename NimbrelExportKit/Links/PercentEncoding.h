#pragma once

#include <string>
#include <string_view>

namespace vorn::links {

/// Appends `address`, or one from its path on, to `url`, percent-encoding the bytes that may not stand in a URL (RFC
/// 3986): everything outside ASCII; quotation marks, `|` and the like; a '%' that begins no escape; square brackets
/// outside the host; a second '#'. What is encoded already stays as it is. Hosts outside ASCII are `appendHost`'s.
/// Threads: any.
void appendPercentEncoded(std::string_view address, std::string& url);

} // namespace vorn::links
