#pragma once

#include <cstddef>
#include <string_view>

/// The top-level domains that exist, from the public suffix list. Threads: any.
namespace vorn::links {

/// Whether `label` is one, ignoring case; international ones as people read them ("рф") or as "xn--…".
/// Takes well-formed UTF-8.
bool isTopLevelDomain(std::string_view label);

/// The size of the longest top-level domain at the beginning of `text` in a script without word boundaries, such as
/// Chinese or Japanese; 0 if there is none. Other text may follow it directly.
std::size_t unspacedTopLevelDomainPrefix(std::string_view text);

} // namespace vorn::links
