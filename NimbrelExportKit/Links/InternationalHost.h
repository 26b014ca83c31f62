#pragma once

#include <string>
#include <string_view>

namespace vorn::links {

/// Appends the ASCII form of `host`, which has non-ASCII letters, to `url`: "xn--bcher-kva.de" for "bücher.de". False,
/// without changing `url`, if there is none. Threads: any.
bool appendHost(std::string_view host, std::string& url);

/// Rewrites the host of an absolute `url` to that form if it has percent escapes or non-ASCII letters, as the system's
/// detector may return it. False, without changing `url`, if there is none. Threads: any.
bool makeHostResolvable(std::string& url);

} // namespace vorn::links
