#pragma once

#include <cstddef>
#include <string_view>

namespace vorn::links {

/// The one machine that people name without a dot or a scheme, with a port: "localhost:8080".
constexpr std::string_view localHost = "localhost";

/// The position at or after `from` of the next byte that may belong to a link: a '.' with letters or digits of any
/// script on both sides, the ':' of "://" after a letter or digit, or the ':' before a digit after `localHost`; npos
/// when there is none. Nearly all text of a chat is read here and nowhere else. Threads: any.
std::size_t nextCandidate(std::string_view text, std::size_t from) noexcept;

/// False for text in which no detector finds a link of any scheme: where nothing but spaces, or sentence's punctuation,
/// touches its dots, colons and '@'. True for all text that the system's detector finds one in, and some more; far
/// cheaper than asking it. Threads: any.
bool mayHoldLink(std::string_view text) noexcept;

} // namespace vorn::links
