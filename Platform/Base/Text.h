#pragma once

#include <cstddef>
#include <string>
#include <string_view>

/// Unicode text as UTF-8. Threads: any.
namespace vorn::text {

/// Whether `bytes` is well-formed UTF-8: shortest forms only, no surrogates, nothing above U+10FFFF. NUL is a
/// character.
bool isWellFormed(std::string_view bytes) noexcept;

/// `bytes` with each maximal ill-formed part replaced by one U+FFFD, as the Unicode Standard (3.9, table 3-8)
/// recommends.
std::string repaired(std::string_view bytes);

/// As `repaired`, without copying well-formed bytes: the result points to `bytes`, or to `room`, which then holds the
/// repaired text.
std::string_view repaired(std::string_view bytes, std::string& room);

/// `text` without the white space and newlines at both ends: general categories Zs, Zl and Zp, U+0009–000D, U+0085.
/// Takes well-formed text; the result points into it.
std::string_view trimmed(std::string_view text) noexcept;

/// `text` in lower case by Unicode's full mappings, independent of language. Takes well-formed text.
std::string lowercased(std::string_view text);

/// Appends `scalar` to `text`; U+FFFD for an invalid one.
void append(std::string& text, char32_t scalar);

/// The first `count` user-perceived characters of `text`, each of which may consist of many scalars; none is split.
/// Takes well-formed text.
std::string prefixOfCharacters(std::string_view text, std::size_t count);

/// The Unicode scalars of `text`; U+FFFD stands for each ill-formed part.
std::u32string scalars(std::string_view text);

/// Whether `scalar` is a decimal digit in any script (general category Nd).
bool isDecimalDigit(char32_t scalar) noexcept;

} // namespace vorn::text
