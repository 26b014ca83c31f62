#pragma once

#include <string>
#include <string_view>

namespace vorn::links {

/// Appends `address` to `url`, percent-encoding the bytes that may not stand in a URL (RFC 3986): everything outside
/// ASCII, the host included, where the RFC (3.2.2) reads such bytes as UTF-8 as well; quotation marks, `|` and the
/// like; a '%' that begins no escape; square brackets outside the host; a second '#'. What is encoded already stays as
/// it is. Threads: any.
void appendPercentEncoded(std::string_view address, std::string& url);

} // namespace vorn::links
