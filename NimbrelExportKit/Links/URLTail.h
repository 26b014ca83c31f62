#pragma once

#include <cstddef>
#include <string_view>

namespace vorn::links {

/// Whether a path, query or fragment begins at `at`.
constexpr bool beginsTail(std::string_view text, std::size_t at) noexcept
{
    return at < text.size() && (text[at] == '/' || text[at] == '?' || text[at] == '#');
}

/// Where the path, query and fragment that begin at `at` (a '/', '?' or '#') end, as a reader sees them. Brackets
/// inside are balanced; quotation marks, sentence punctuation, text of a script without spaces and emoji that follow
/// are left out. `before` is the character in front of the whole link, NUL when there is none: a quotation mark there
/// ends the link at the matching one. If `host` is a link shortener, only the letters and digits of its code belong to
/// the path. Returns `at` when nothing is left. Threads: any.
std::size_t tailEnd(std::string_view text, std::size_t at, char before, std::string_view host = {});

} // namespace vorn::links
