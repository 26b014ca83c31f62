#pragma once

#include <algorithm>
#include <string>
#include <string_view>

/// Functions for ASCII characters, independent of the process's locale. They take code units of any encoding that
/// contains ASCII, and Unicode scalars. Threads: any.
namespace vorn::ascii {

template <class Character>
constexpr bool isDigit(Character c) noexcept
{
    return c >= '0' && c <= '9';
}

template <class Character>
constexpr bool isLetter(Character c) noexcept
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

template <class Character>
constexpr bool isAlphanumeric(Character c) noexcept
{
    return isLetter(c) || isDigit(c);
}

template <class Character>
constexpr bool isHexDigit(Character c) noexcept
{
    return isDigit(c) || (c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F');
}

constexpr char lowercased(char c) noexcept
{
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

/// `text` with its ASCII letters in lower case; all other bytes are unchanged.
inline std::string lowercased(std::string_view text)
{
    std::string lower(text);
    for (char& c : lower) c = lowercased(c);
    return lower;
}

constexpr bool equalIgnoringCase(std::string_view left, std::string_view right) noexcept
{
    return std::ranges::equal(left, right, [](char a, char b) { return lowercased(a) == lowercased(b); });
}

} // namespace vorn::ascii
