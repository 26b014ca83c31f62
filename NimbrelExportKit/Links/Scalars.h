#pragma once

#include "Platform/Base/ASCII.h"

#include <cstddef>
#include <cstdint>
#include <string_view>

/// The Unicode scalars of a message, classified for the link detector. Threads: any.
namespace vorn::links {

struct Scalar {
    char32_t value = 0;
    std::size_t size = 1; ///< in bytes, at least 1
};

/// The scalar that begins at `at`, which is inside `text`. Ill-formed bytes read as U+FFFD, one at a time.
Scalar scalarAt(std::string_view text, std::size_t at) noexcept;

/// The scalar that ends just before `end`, which must be above 0.
Scalar scalarBefore(std::string_view text, std::size_t end) noexcept;

constexpr bool isASCII(char c) noexcept
{
    return static_cast<unsigned char>(c) < 0x80;
}

using ascii::isAlphanumeric;
using ascii::isDigit;
using ascii::isHexDigit;
using ascii::isLetter;

/// Whether a byte of UTF-8 is an ASCII letter or digit, or part of a non-ASCII character.
constexpr bool isWordCharacter(char c) noexcept
{
    return !isASCII(c) || isAlphanumeric(c);
}

constexpr bool isOneOf(char c, std::string_view set) noexcept
{
    return set.find(c) != std::string_view::npos;
}

/// What a scalar can be within an address. Scripts that are used side by side without spaces are one kind.
enum class Script : std::uint8_t {
    none,        ///< ends an address: white space, controls, quotation marks, full-width and other punctuation
    latin,       ///< ASCII and the Latin letters beyond it
    spaced,      ///< Cyrillic, Greek and further letters of languages that put spaces between words
    rightToLeft, ///< Hebrew, Arabic and their neighbours
    unspaced,    ///< Chinese, Japanese, Korean and the scripts of south-east Asia that put no spaces between words
    symbol,      ///< emoji, arrows, currency and the like
    joiner,      ///< zero-width joiners and variation selectors: belong to the scalar before them
    dash,        ///< typographic dashes and apostrophes: inside an address, never at its end
};

/// The kind of a scalar outside ASCII; `latin` for ASCII.
Script scriptOf(char32_t scalar) noexcept;

} // namespace vorn::links
