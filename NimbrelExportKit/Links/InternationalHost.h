#pragma once

#include <string>
#include <string_view>

namespace vorn::links {

/// Appends the ASCII form of `host`, which has non-ASCII letters, to `url`: "xn--bcher-kva.de" for "bücher.de". Returns
/// false, without changing `url`, if it has no such form. Threads: any.
bool appendHost(std::string_view host, std::string& url);

/// Rewrites the host of an absolute `url` to its ASCII form if it has percent escapes or non-ASCII letters, as one from
/// the system's detector may. Returns false, without changing `url`, if it has no such form. Threads: any.
bool makeHostResolvable(std::string& url);

} // namespace vorn::links
