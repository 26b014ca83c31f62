#pragma once

#include <cstddef>
#include <string_view>

namespace vorn::links {

/// The position at or after `from` of the next byte that may belong to a link: a '.' with letters or digits of any
/// script on both sides, or the ':' of "://" after a letter or digit; npos when there is none. Nearly all text of a
/// chat is read here and nowhere else. Threads: any.
std::size_t nextCandidate(std::string_view text, std::size_t from) noexcept;

} // namespace vorn::links
