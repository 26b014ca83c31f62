#pragma once

#include <string>
#include <string_view>

namespace vorn::links {

/// Appends the name `host`, which holds letters outside ASCII, to `url` as resolvers know it: "xn--bcher-kva.de" for
/// "bücher.de". False, and `url` stays as it is, where there is no such name. Threads: any.
bool appendHost(std::string_view host, std::string& url);

/// Gives the host of an absolute `url` that form, where it is written with percent escapes or letters outside ASCII, as
/// the system's detector may write it. False, and `url` stays as it is, where there is no such name. Threads: any.
bool makeHostResolvable(std::string& url);

} // namespace vorn::links
