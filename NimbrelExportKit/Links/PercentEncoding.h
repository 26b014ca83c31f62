#pragma once

#include <string>
#include <string_view>

namespace vorn::links {

/// Appends `address`, or a part of one, to `url`, percent-encoding bytes that a URL may not hold (RFC 3986): everything
/// outside ASCII; double quotation marks, `|` and the like; a '%' that begins no escape; square brackets outside the
/// host; a second '#'. Keeps existing escapes. For hosts outside ASCII, see `appendHost`. Threads: any.
void appendPercentEncoded(std::string_view address, std::string& url);

} // namespace vorn::links
