#pragma once

#include <cstddef>
#include <string_view>

namespace vorn::links {

/// The one host that needs neither a dot nor a scheme, only a port: "localhost:8080".
constexpr std::string_view localHost = "localhost";

/// The position at or after `from` of the next byte that may belong to a link: a '.' with letters or digits of any
/// script on both sides, the ':' of "://" after a letter or digit, or the ':' before a digit after `localHost`; npos
/// when there is none. Nearly all of a chat's text is read by nothing else. Threads: any.
std::size_t nextCandidate(std::string_view text, std::size_t from) noexcept;

/// False only for text in which no detector finds a link: nothing but spaces or a sentence's punctuation touches its
/// dots, colons and '@'. True for every text in which the system's detector finds one, and for some more; far cheaper
/// than running it. Threads: any.
bool mayHoldLink(std::string_view text) noexcept;

} // namespace vorn::links
